// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

namespace {

CardRecord Tickkarte(int nummer)
{
    CardRecord card = MakeCard(nummer, 0, nummer);
    card.Antworttyp = 2;
    card.Antwort_2 = card.Antwort_2_Klartext = QStringLiteral("zwei");
    card.Antwort_3 = card.Antwort_3_Klartext = QStringLiteral("drei");
    card.Antwort_5 = card.Antwort_5_Klartext = QStringLiteral("fünf");
    card.Antwort_ch_2 = card.Antwort_ch_5 = true;
    return card;
}

// Counts how often a window has been painted.
class Malzaehler final : public QObject
{
public:
    explicit Malzaehler(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++gemalt;
        return false;
    }

    int gemalt = 0;
};

// The key left of "Y" on a German keyboard, as the window system delivers it there.
void TasteLinksVonY(QWidget *ziel, Qt::KeyboardModifiers umschalter)
{
    const bool gross = umschalter.testFlag(Qt::ShiftModifier);
    QKeyEvent taste(QEvent::KeyPress, gross ? Qt::Key_Greater : Qt::Key_Less, umschalter, 94, 0, 0,
                    gross ? QStringLiteral(">") : QStringLiteral("<"));
    QApplication::sendEvent(ziel, &taste);
}

} // namespace

class PFAendernTest : public QObject
{
    Q_OBJECT

private slots:

    void ShowsTheCurrentCardWithTheFocusInTheQuestion()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        QCOMPARE(b.fenster->windowTitle(), QStringLiteral("Merkkasten Ändern"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        QCOMPARE(b.Text("MaskFachNr"), QStringLiteral("0"));
        QCOMPARE(b.Text("MFrage"), QStringLiteral("Frage 1"));
        QCOMPARE(b.Text("Antwort(0)"), QStringLiteral("Antwort 1"));
        QCOMPARE(b.Text("MaskThema"), QStringLiteral("Thema 1"));
        QVERIFY(!b.Neu());
        QVERIFY(b.Steuerung("MFrage")->hasFocus());
    }

    void ShowingCardsIsNoChange()
    {
        EditorBuehne b({Tickkarte(1), MakeCard(2, 0, 2), MakeCard(3, 1, 1)});
        const QList<CardRecord> vorher = ReadAll(b);
        b.Zeigen();
        for (int i = 0; i < 4; ++i)
            b.Klick("CVor");
        for (int i = 0; i < 4; ++i)
            b.Klick("CZurück");
        QVERIFY(b.fenster->close());
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.Stored(), vorher);
    }

    void TypedCardsOfAnEmptyFileGetTheirNumbersInTurn()
    {
        EditorBuehne b({});
        b.Zeigen();
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        b.Tippen("MFrage", QStringLiteral("eins?"));
        b.Taste(Qt::Key_Tab);
        b.Tippen("Antwort(0)", QStringLiteral("ja"));
        b.Tippen("MaskThema", QStringLiteral("Zahlen"));
        b.Klick("Cadd");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.Text("MFrage"), QString());
        QCOMPARE(b.Text("MaskThema"), QString());
        QCOMPARE(b.kartei.store.HighestCardNumber, qint16(1));
        QCOMPARE(int(b.kartei.store.Felder().FrageNr.Integer()), 1);
        // The next card can be typed at once.
        QVERIFY(b.Steuerung("MFrage")->hasFocus());
        b.Tippen("MFrage", QStringLiteral("zwei?"));
        b.Tippen("Antwort(0)", QStringLiteral("nein"));
        b.Taste(Qt::Key_I, Qt::ControlModifier);
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        QCOMPARE(cards[0].Frage_Klartext, QStringLiteral("eins?"));
        QCOMPARE(cards[0].Picture_9_Name, QStringLiteral("Zahlen"));
        QVERIFY(cards[0].Frage.startsWith(QStringLiteral("{\\rtf")));
        QCOMPARE(cards[1].FrageNr, 2.0);
        QCOMPARE(cards[1].FachLfdNr, 2.0);
    }

    void NewCardComesInTheStandardFont()
    {
        EditorBuehne b({});
        b.konfig.schrift = {QStringLiteral("Liberation Serif"), 15, true, true, false, true, 0x0000FF};
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Tippen("Antwort(4)", {});
        const QTextCharFormat format = b.Box("MFrage")->currentCharFormat();
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(QStringLiteral("Liberation Serif")));
        QCOMPARE(format.fontPointSize(), 15.0);
        QCOMPARE(format.fontWeight(), int(QFont::Bold));
        QVERIFY(format.fontItalic() && format.fontUnderline() && !format.fontStrikeOut());
        QCOMPARE(format.foreground().color(), QColor(255, 0, 0)); // red is the lowest byte
        b.Tippen("Antwort(0)", QStringLiteral("a"));
        b.Klick("Cadd");
        const QString rtf = b.kartei.Stored()[0].Frage;
        QVERIFY(rtf.contains(QStringLiteral("Liberation Serif")));
        QVERIFY(rtf.contains(QStringLiteral("\\fs30")));
    }

    void TextOfSeveralLinesIsStoredWithCrLf()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("a"));
        b.Taste(Qt::Key_Return);
        QTest::keyClicks(b.Steuerung("MFrage"), QStringLiteral("b"));
        b.Tippen("Antwort(0)", QStringLiteral("c"));
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("a\r\nb"));
    }

    void MissingQuestionIsSaidAndGetsTheFocus()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippen("Antwort(0)", QStringLiteral("a"));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        QVERIFY(b.Steuerung("MFrage")->hasFocus());
        QCOMPARE(b.Text("Antwort(0)"), QStringLiteral("a"));
        QCOMPARE(b.kartei.store.FehlerStatus, qint16(1));
    }

    void MissingAnswerIsSaidAndGetsTheFocus()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Keine Antwort eingegeben")));
        QVERIFY(b.Steuerung("Antwort(0)")->hasFocus());
    }

    void TickedEmptyAnswerIsRefused()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Klick("Antwort_K");
        b.Tippen("Antwort(1)", QStringLiteral("a"));
        for (const char *kreuz : {"Check1(0)", "Check1(1)", "Check1(3)"})
            QTest::mouseClick(b.Steuerung(kreuz), Qt::LeftButton, {},
                              QPoint(8, b.Steuerung(kreuz)->height() / 2));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Leere Antwort angekreuzt")));
        QVERIFY(b.Steuerung("Antwort(3)")->hasFocus());
        QVERIFY(b.kartei.Stored().isEmpty());
    }

    void TickCardWithoutATickIsStored()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Klick("Antwort_K");
        b.Tippen("Antwort(1)", QStringLiteral("a"));
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antworttyp, 2.0);
        QVERIFY(!card.Antwort_ch_1 && !card.Antwort_ch_2);
        QCOMPARE(card.Antwort_2_Klartext, QStringLiteral("a"));
    }

    void TicksAreShownAsTheyWereStored()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        QVERIFY(b.Finde<QRadioButton>("Antwort_K")->isChecked());
        for (int i = 0; i < 5; ++i) {
            auto *kreuz = b.Finde<QCheckBox>(qPrintable(QStringLiteral("Check1(%1)").arg(i)));
            QVERIFY(kreuz->isVisible());
            QCOMPARE(kreuz->isChecked(), i == 1 || i == 4);
            QVERIFY(b.Steuerung(qPrintable(QStringLiteral("Antwort(%1)").arg(i)))->isVisible());
        }
    }

    void SwitchingTheTypeKeepsTextsAndTicks()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QRect frage = b.Steuerung("MFrage")->geometry();
        const QPoint knopf = b.Steuerung("Cadd")->pos();
        QCOMPARE(b.Steuerung("Antwort(0)")->size(), b.Steuerung("Antwort(1)")->size());
        b.Klick("Antwort_T");
        QApplication::processEvents();
        const int hoch = b.Steuerung("Antwort(0)")->height();
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(b.Steuerung(qPrintable(QStringLiteral("Antwort(%1)").arg(i)))->isVisible(), i == 0);
            QVERIFY(!b.Steuerung(qPrintable(QStringLiteral("Check1(%1)").arg(i)))->isVisible());
        }
        b.Klick("Antwort_K");
        QApplication::processEvents();
        QVERIFY(hoch > 3 * b.Steuerung("Antwort(0)")->height());
        QCOMPARE(b.Text("Antwort(4)"), QStringLiteral("fünf"));
        QVERIFY(b.Finde<QCheckBox>("Check1(4)")->isChecked());
        // Nothing else has moved.
        QCOMPARE(b.Steuerung("MFrage")->geometry(), frage);
        QCOMPARE(b.Steuerung("Cadd")->pos(), knopf);
    }

    void TickCardStoredAsTextKeepsItsTicksInTheRecord()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Klick("Antwort_T");
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antworttyp, 1.0);
        QVERIFY(card.Antwort_ch_2 && card.Antwort_ch_5);
        QCOMPARE(card.Antwort_5_Klartext, QStringLiteral("fünf"));
    }

    void TextCardWithItsAnswerInAHiddenBoxIsStored()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antwort_1 = card.Antwort_1_Klartext = QString();
        card.Antwort_3 = card.Antwort_3_Klartext = QStringLiteral("drei");
        EditorBuehne b({card});
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("xFrage 1"));
    }

    void EmptiedAnswerKeepsItsPlainTextInTheRecord()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Ersetzen("Antwort(2)", {});
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antwort_3_Klartext, QStringLiteral("drei"));
        QVERIFY(!card.Antwort_3.contains(QStringLiteral("drei")));
    }

    void CardWithoutATypeShowsNoneAndKeepsNone()
    {
        CardRecord card = MakeCard(2, 0, 2);
        card.Antworttyp = 0;
        EditorBuehne b({Tickkarte(1), card});
        b.Zeigen();
        b.Klick("CVor");
        QVERIFY(!b.Finde<QRadioButton>("Antwort_T")->isChecked());
        QVERIFY(!b.Finde<QRadioButton>("Antwort_K")->isChecked());
        b.Ersetzen("MFrage", QStringLiteral("neu"));
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[1].Antworttyp, 0.0);
    }

    void CardWithoutATypeIsNotRefusedForATickThatNobodySees()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = 0;
        card.Antwort_ch_3 = true;
        EditorBuehne b({card});
        b.Zeigen();
        b.Ersetzen("MFrage", QStringLiteral("neu"));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList());
        QVERIFY(b.Steuerung("Antwort(0)")->isVisible() && !b.Steuerung("Antwort(2)")->isVisible());
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Frage_Klartext, QStringLiteral("neu"));
        QVERIFY(stored.Antwort_ch_3);
    }

    // --- What is typed or clicked is stored on leaving the card

    void EveryKindOfChangeIsStoredWhenTheCardIsLeft_data()
    {
        QTest::addColumn<int>("was");
        QTest::newRow("question") << 0;
        QTest::newRow("answer") << 1;
        QTest::newRow("topic") << 2;
        QTest::newRow("tick") << 3;
        QTest::newRow("type by mouse") << 4;
        QTest::newRow("type by key") << 5;
        QTest::newRow("tick by key") << 6;
    }

    void EveryKindOfChangeIsStoredWhenTheCardIsLeft()
    {
        QFETCH(int, was);
        EditorBuehne b({Tickkarte(1), MakeCard(2, 0, 2)});
        b.Zeigen();
        switch (was) {
        case 0:
            b.Tippen("MFrage", QStringLiteral("neu "));
            break;
        case 1:
            b.Tippen("Antwort(4)", QStringLiteral("neu "));
            break;
        case 2:
            b.Ersetzen("MaskThema", QStringLiteral("neu "));
            break;
        case 3:
            QTest::mouseClick(b.Steuerung("Check1(0)"), Qt::LeftButton, {}, QPoint(8, 8));
            break;
        case 4:
            b.Klick("Antwort_T");
            break;
        case 5:
            b.Steuerung("Antwort_K")->setFocus();
            b.Taste(Qt::Key_Left);
            break;
        case 6:
            b.Steuerung("Check1(0)")->setFocus();
            b.Taste(Qt::Key_Space);
            break;
        }
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext.startsWith(QStringLiteral("neu ")), was == 0);
        QCOMPARE(card.Antwort_5_Klartext.startsWith(QStringLiteral("neu ")), was == 1);
        QCOMPARE(card.Picture_9_Name, was == 2 ? QStringLiteral("neu ") : QStringLiteral("Thema 1"));
        QCOMPARE(card.Antwort_ch_1, was == 3 || was == 6);
        QCOMPARE(card.Antworttyp, was == 4 || was == 5 ? 1.0 : 2.0);
    }

    // --- Navigation

    void NextAndPreviousGoThroughTheBoxToBlankNewCards()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
        QCOMPARE(b.Text("MaskFachNr"), QStringLiteral("2"));
        b.Klick("CVor");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("4"));
        QCOMPARE(b.Text("MFrage"), QString());
        b.Klick("CVor");
        QVERIFY(b.Neu());
        b.Klick("CZurück");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
        for (int i = 0; i < 3; ++i)
            b.Klick("CZurück");
        QVERIFY(b.Neu());
        b.Klick("CZurück");
        QVERIFY(b.Neu());
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void KeyLeftOfYGoesBackAndWithShiftOn_data()
    {
        QTest::addColumn<QString>("feld");
        for (const char *feld : {"MFrage", "Antwort(0)", "MaskThema", "MaskFrageNr", "Cadd", "Antwort_T"})
            QTest::newRow(feld) << QString::fromUtf8(feld);
    }

    void KeyLeftOfYGoesBackAndWithShiftOn()
    {
        QFETCH(QString, feld);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        QWidget *ziel = b.Steuerung(qPrintable(feld));
        ziel->setFocus();
        TasteLinksVonY(ziel, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.Text("MFrage"), QStringLiteral("Frage 2"));
        TasteLinksVonY(ziel, Qt::ControlModifier);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
    }

    void SignsGoBackAndOnWhereTheyAreOnOtherKeys()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        constexpr quint32 punkt = 60;
        constexpr quint32 komma = 59;
        const auto taste = [&](Qt::Key key, quint32 ort) {
            QKeyEvent druck(QEvent::KeyPress, key, Qt::ControlModifier | Qt::ShiftModifier, ort, 0, 0);
            QApplication::sendEvent(b.Steuerung("MFrage"), &druck);
        };
        taste(Qt::Key_Greater, punkt);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        taste(Qt::Key_Less, komma);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        // Without Ctrl they are text.
        QTest::keyClicks(b.Steuerung("MFrage"), QStringLiteral("<>"));
        QCOMPARE(b.Text("MFrage"), QStringLiteral("<>Frage 1"));
    }

    void ShortcutsWithoutAPlaceMeanTheGermanKey()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        b.Taste(Qt::Key_Less, Qt::ControlModifier);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        b.Taste(Qt::Key_Greater, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
    }

    void EndButtonOpensABlankCardBehindTheLast()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("4"));
        b.Klick("CZurück");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
    }

    void HeldButtonRunsOnPaintsEveryCardAndStopsWhenReleased()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 5000; ++i)
            cards << MakeCard(i, 0, i);
        EditorBuehne b(cards);
        b.Zeigen();
        const Malzaehler gemalt(b.Steuerung("Formular"));
        QTest::mousePress(b.Steuerung("CVVor"), Qt::LeftButton);
        QTRY_VERIFY(b.Text("MaskFrageNr").toInt() > 300);
        QTest::mouseRelease(b.Steuerung("CVVor"), Qt::LeftButton);
        const int dort = b.Text("MaskFrageNr").toInt();
        QVERIFY(dort < 5000);
        QVERIFY(gemalt.gemalt >= dort - 1);
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents();
        QCOMPARE(b.Text("MaskFrageNr").toInt(), dort);
        QCOMPARE(int(b.kartei.store.Felder().FrageNr.Integer()), dort);

        QTest::mousePress(b.Steuerung("CZZurück"), Qt::RightButton);
        QTRY_VERIFY(b.Text("MaskFrageNr").toInt() < dort - 5);
        QTest::mouseRelease(b.Steuerung("CZZurück"), Qt::RightButton);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void HeldButtonStopsAtTheEndsOnABlankCardWithoutAnError()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        for (const char *knopf : {"CVVor", "CZZurück"}) {
            QTest::mousePress(b.Steuerung(knopf), Qt::LeftButton);
            QTRY_VERIFY(b.Neu());
            for (int i = 0; i < 20; ++i)
                QApplication::processEvents();
            QTest::mouseRelease(b.Steuerung(knopf), Qt::LeftButton);
            // Pressed at the end, it stays there.
            QTest::mouseClick(b.Steuerung(knopf), Qt::LeftButton);
            QVERIFY(b.Neu());
        }
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void ShortPressOfTheRunButtonGoesOneCardOn()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVVor");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
    }

    void RunIsHeldByTheSpaceBarToo()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Steuerung("CVVor")->setFocus();
        QTest::keyPress(b.Steuerung("CVVor"), Qt::Key_Space);
        QTRY_VERIFY(b.Neu());
        QTest::keyRelease(b.Steuerung("CVVor"), Qt::Key_Space);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void RunDoesNotBeginFromACardThatMayNotBeStored()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MFrage", {});
        QTest::mousePress(b.Steuerung("CVVor"), Qt::LeftButton);
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents();
        QTest::mouseRelease(b.Steuerung("CVVor"), Qt::LeftButton);
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        QVERIFY(!b.Finde<QAbstractButton>("CVVor")->isDown());
    }

    void RunEndsAtAMessage_data()
    {
        QTest::addColumn<int>("karte");
        QTest::newRow("of the first step") << 2;
        QTest::newRow("on the way") << 6;
    }

    void RunEndsAtAMessage()
    {
        QFETCH(int, karte);
        QList<CardRecord> cards;
        for (int i = 1; i <= 20; ++i) {
            cards << MakeCard(i, 0, i);
            if (i >= karte)
                cards.last().Picture_1_Name = QStringLiteral("fehlt.bmp");
        }
        MeldungenFenster meldungen;
        EditorBuehne b(cards, &meldungen);
        b.Zeigen();
        const auto umlaufen = [] {
            for (int i = 0; i < 20; ++i)
                QApplication::processEvents();
        };
        // Closes what opens, a few rounds of the event loop later.
        QStringList gesehen;
        int runden = 0;
        QTimer uhr;
        connect(&uhr, &QTimer::timeout, this, [&] {
            auto *box = dynamic_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || ++runden % 4 != 0)
                return;
            gesehen << box->text();
            box->accept();
        });
        uhr.start(5);
        auto *knopf = b.Finde<QAbstractButton>("CVVor");
        QTest::mousePress(knopf, Qt::LeftButton);
        QTRY_VERIFY(!gesehen.isEmpty() && !QApplication::activeModalWidget());
        umlaufen();
        QVERIFY(!knopf->isDown());
        QCOMPARE(b.Text("MaskFrageNr").toInt(), karte);
        b.fenster->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(b.fenster.get()));
        umlaufen();
        QCOMPARE(b.Text("MaskFrageNr").toInt(), karte);
        QCOMPARE(gesehen, QStringList(QStringLiteral("Bilddatei nicht gefunden fehlt.bmp")));
    }

    void RunStoresAChangedCardFirst()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("neu "));
        b.Klick("CVVor");
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("neu Frage 1"));
    }

    // --- Jump, copy, delete

    void TypedNumberAndEnterJumpAndNextGoesOnInTheBox()
    {
        EditorBuehne b({MakeCard(1, 3, 1), MakeCard(2, 0, 1), MakeCard(3, 1, 1)});
        b.Zeigen();
        b.Ersetzen("MaskFrageNr", QStringLiteral("3"));
        b.Taste(Qt::Key_Return);
        QCOMPARE(b.Text("MFrage"), QStringLiteral("Frage 3"));
        b.Klick("CVor");
        QCOMPARE(b.Text("MFrage"), QStringLiteral("Frage 1"));
    }

    void JumpBeyondTheLastSaysSoAndShowsTheNearestBelow()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MaskFrageNr", QStringLiteral("77"));
        b.Taste(Qt::Key_Enter);
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Karte nicht gefunden: 77")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
    }

    void JumpFromATypedNewCardStoresItFirst()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Tippen("Antwort(0)", QStringLiteral("a"));
        b.Ersetzen("MaskFrageNr", QStringLiteral("2"));
        b.Taste(Qt::Key_Return);
        QCOMPARE(b.Text("MFrage"), QStringLiteral("Frage 2"));
        QCOMPARE(b.kartei.Stored().size(), 4);
    }

    void CopyIsAddedAndShown()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Menue("MExtras", "MKopieren");
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Karte kopiert nach: 2")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QVERIFY(!b.Neu());
        QCOMPARE(b.Text("Antwort(4)"), QStringLiteral("fünf"));
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        QVERIFY(cards[1].Antwort_ch_2 && cards[1].Antwort_ch_5 && !cards[1].Antwort_ch_1);
    }

    // Storing the rest of the card, and copying it, must not cost what the form cannot show.
    void TextThatIsTooLongForTheFormStaysAsItIs()
    {
        CardRecord lang = MakeCard(1, 0, 1);
        lang.Frage = QStringLiteral("{\\rtf1\\fs3276 ") + QStringLiteral("\\line ").repeated(5'000) + u'}';
        EditorBuehne b({lang});
        b.Zeigen();
        QVERIFY(b.Text("MFrage").endsWith(QStringLiteral("[…]")));
        b.Ersetzen("MFrage", QStringLiteral("weg"));
        b.Auswaehlen("MFrage", 0, 2);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Ersetzen("MaskThema", QStringLiteral("anderes"));
        b.Ersetzen("Antwort(0)", QStringLiteral("kurz"));
        b.Klick("Cadd");
        b.Menue("MExtras", "MKopieren");
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Karte kopiert nach: 2")));
        b.Klick("CEOF");
        b.Tippen("MFrage", QStringLiteral("frei"));
        QCOMPARE(b.Text("MFrage"), QStringLiteral("frei"));
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        for (const CardRecord &card : cards) {
            QCOMPARE(card.Frage, lang.Frage);
            QCOMPARE(card.Frage_Klartext, lang.Frage_Klartext);
            QCOMPARE(card.Picture_9_Name, QStringLiteral("anderes"));
            QCOMPARE(card.Antwort_1_Klartext, QStringLiteral("kurz"));
        }
    }

    void DeleteAsksAndShowsTheNextCard()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Nein, Meldungen::Antwort::Ja};
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Meldungstexte(), QStringList(2, QStringLiteral("Diese Karte wirklich löschen")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(b.kartei.Stored().size(), 2);
    }

    void DeleteIsRefusedOnANewCardAndOnTheLastOne()
    {
        EditorBuehne b({MakeCard(1, 2, 1), MakeCard(2, 6, 1)});
        b.Zeigen();
        b.Menue("MExtras", "MLöschen");
        b.Klick("CEOF");
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Meldungstexte(),
                 (QStringList{QStringLiteral("Die letzte Karte kann nicht gelöscht werden"),
                              QStringLiteral("Eine neue Karte kann nicht gelöscht werden")}));
    }

    void NumbersGoOnAfterADelete()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 10; ++i)
            cards << MakeCard(i, 0, i);
        EditorBuehne b(cards);
        b.Zeigen();
        b.Ersetzen("MaskFrageNr", QStringLiteral("5"));
        b.Taste(Qt::Key_Return);
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("6"));
        b.Klick("CEOF");
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("11"));
    }

    // --- Keys

    void AltPageUpInTheQuestionSaysSoAndNothingElse()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Steuerung("MFrage")->setFocus();
        b.Taste(Qt::Key_PageUp, Qt::AltModifier);
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Alt + PageUp")));
        b.Steuerung("Antwort(0)")->setFocus();
        b.Taste(Qt::Key_PageUp, Qt::AltModifier);
        QVERIFY(b.Meldungstexte().isEmpty());
        QVERIFY(b.fenster->close());
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }

    void UndoAndRedoWorkInEveryBox_data()
    {
        QTest::addColumn<QString>("feld");
        for (const char *feld : {"MFrage", "Antwort(0)", "Antwort(4)", "MaskThema"})
            QTest::newRow(feld) << QString::fromUtf8(feld);
    }

    void UndoAndRedoWorkInEveryBox()
    {
        QFETCH(QString, feld);
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QByteArray name = feld.toUtf8();
        const QString vorher = b.Text(name);
        b.Steuerung(name)->setFocus();
        b.Taste(Qt::Key_Home, Qt::ControlModifier);
        b.Taste(Qt::Key_Home);
        QTest::keyClicks(b.Steuerung(name), QStringLiteral("xyz"));
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text(name), vorher);
        // Showing the card is nothing that could be undone.
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text(name), vorher);
        b.Taste(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(b.Text(name), QStringLiteral("xyz") + vorher);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        b.Taste(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text(name), QStringLiteral("xyz") + vorher);
    }

    void TabGoesThroughAllControlsOnce()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Steuerung("MaskFrageNr")->setFocus();
        QStringList folge;
        for (int i = 0; i < 40; ++i) {
            folge << b.fenster->focusWidget()->objectName();
            b.Taste(Qt::Key_Tab);
            if (b.fenster->focusWidget()->objectName() == folge.front())
                break;
        }
        QCOMPARE(
            folge.join(u' '),
            QStringLiteral("MaskFrageNr MaskThema MFrage Antwort_K Antwort(0) Check1(0) Antwort(1) Check1(1) "
                           "Antwort(2) Check1(2) Antwort(3) Check1(3) Antwort(4) Check1(4) CZZurück CZurück "
                           "CVor CVVor CEOF Cadd Cback"));
    }

    void EveryControlHasAnAccessibleName()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        int gesehen = 0;
        for (const QWidget *widget : b.fenster->findChildren<QWidget *>()) {
            if (widget->focusPolicy() == Qt::NoFocus ||
                widget->objectName().startsWith(QStringLiteral("qt_")))
                continue;
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
            ++gesehen;
        }
        QVERIFY(gesehen > 20);
    }

    void MnemonicsLeadToTheirFieldsAndAreUnique()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QList<QPair<Qt::Key, const char *>> wege{{Qt::Key_N, "MaskFrageNr"},
                                                       {Qt::Key_T, "MaskThema"},
                                                       {Qt::Key_F, "MFrage"},
                                                       {Qt::Key_A, "Antwort(0)"}};
        for (const auto &[taste, feld] : wege) {
            b.Steuerung("Cback")->setFocus();
            b.Taste(taste, Qt::AltModifier);
            QVERIFY2(b.Steuerung(feld)->hasFocus(), feld);
        }
        QString tasten;
        const auto sammle = [&](const QString &text) {
            const qsizetype und = text.indexOf(u'&');
            if (und >= 0)
                tasten += text[und + 1].toLower();
        };
        for (const QLabel *label : b.Steuerung("Formular")->findChildren<QLabel *>())
            sammle(label->text());
        for (const QAbstractButton *knopf : b.Steuerung("Formular")->findChildren<QAbstractButton *>())
            sammle(knopf->text());
        sammle(b.Eintrag("MFont")->text());
        sammle(b.Eintrag("MExtras")->text());
        QCOMPARE(QSet<QChar>(tasten.begin(), tasten.end()).size(), tasten.size());
    }

    void CaptionsAndTooltipsReadAsUsersKnowThem()
    {
        EditorBuehne b(DreiKarten());
        QCOMPARE(b.Finde<QAbstractButton>("CEOF")->text(), QStringLiteral(">>|"));
        QCOMPARE(b.Steuerung("CVor")->toolTip(), QStringLiteral("nächste Karte STRG + SHIFT + >"));
        QCOMPARE(b.Steuerung("CZurück")->toolTip(), QStringLiteral("vorige Karte STRG+<"));
        QCOMPARE(b.Steuerung("Cadd")->toolTip(), QStringLiteral("Karte hinzufügen (STRG+I)"));
        QCOMPARE(b.Text("LabelNeu"), QStringLiteral("Neue Karte"));
        const auto texte = [&](const char *menue) {
            QStringList liste;
            for (const QAction *eintrag : b.fenster->findChild<QMenu *>(QString::fromUtf8(menue))->actions())
                liste << eintrag->text().remove(u'&');
            return liste.join(u'|');
        };
        QCOMPARE(texte("MFont"), QStringLiteral("Schriftart||Fett|Kursiv|Unterstrichen|Hochgestellt|"
                                                "Normalgestellt|Tiefgestellt"));
        QCOMPARE(texte("MExtras"), QStringLiteral("hinzufügen|suchen|kopieren|löschen|drucken|Bilder|Ton"));
    }

    // --- Closing

    void BackStoresAndCloses()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("neu "));
        b.Klick("Cback");
        QVERIFY(!b.fenster->isVisible());
        QCOMPARE(b.geschlossen, 1);
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("neu Frage 1"));
    }

    void CardThatMayNotBeStoredKeepsTheEditorOpenUnlessItIsDiscarded()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MFrage", {});
        b.Klick("Cback");
        QVERIFY(b.fenster->isVisible());
        QCOMPARE(b.geschlossen, 0);
        QCOMPARE(b.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QCOMPARE(b.Meldungstexte(),
                 (QStringList{QStringLiteral("Keine Frage eingegeben"),
                              QStringLiteral("Diese Karte ist nicht gespeichert. Änderungen verwerfen?")}));
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        QVERIFY(b.fenster->close());
        QCOMPARE(b.geschlossen, 1);
        QCOMPARE(b.kartei.store.FehlerStatus, qint16(0));
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }

    void EndOfTheProgramGoesTheSameRoad()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MFrage", {});
        QApplication::closeAllWindows();
        QVERIFY(b.fenster->isVisible());
        QTest::keyClicks(b.Steuerung("MFrage"), QStringLiteral("doch"));
        QApplication::closeAllWindows();
        QVERIFY(!b.fenster->isVisible());
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("doch"));
    }

    void CardThatCannotBeStoredOffersToBeDiscarded()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippen("MFrage", QStringLiteral("neu "));
        QFile::remove(b.kartei.Path());
        QVERIFY(!b.fenster->close());
        QCOMPARE(b.Text("MFrage"), QStringLiteral("neu Frage 1"));
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        QVERIFY(b.fenster->close());
        QCOMPARE(b.geschlossen, 1);
    }

    void FailedStoreGivesBackWhatWasTypedAndWorksLater()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Tippen("Antwort(0)", QStringLiteral("a"));
        b.Ersetzen("MaskThema", QString(251, u'x'));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte().size(), 1);
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), QStringLiteral("f"));
        QCOMPARE(b.Text("MaskThema").size(), 251);
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("5"));
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(2));
        b.Steuerung("MaskThema")->setFocus();
        b.Taste(Qt::Key_End);
        b.Taste(Qt::Key_Backspace);
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(3));
        QCOMPARE(b.kartei.Stored()[2].FrageNr, 5.0);
    }

    void EditorCanBeOpenedAgain()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Klick("Cback");
        b.Zeigen();
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        b.Klick("Cback");
        QCOMPARE(b.geschlossen, 2);
    }

private:
    static QList<CardRecord> ReadAll(EditorBuehne &b)
    {
        QList<CardRecord> cards;
        CardRecordset &karten = b.kartei.store.Karten();
        for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext())
            cards << karten.Read();
        return cards;
    }
};

QTEST_MAIN(PFAendernTest)
#include "PFAendernTest.moc"
