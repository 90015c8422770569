// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"

#include <QMessageBox>
#include <QTest>

namespace {

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

class PFAendernBlaetternTest : public QObject
{
    Q_OBJECT

private slots:

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
        QCOMPARE(
            b.Steuerung("MFrage")->toolTip(),
            QString("Dieser Text ist zu lang, um ihn ganz zu zeigen. Er bleibt in der Kartei, wie er ist."));
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
};

QTEST_MAIN(PFAendernBlaetternTest)
#include "PFAendernBlaetternTest.moc"
