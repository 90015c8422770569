// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "TestProgram.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

class PFAendernKarteTest : public QObject
{
    Q_OBJECT

private slots:

    void ShowsTheCurrentCardWithTheFocusInTheQuestion()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        QCOMPARE(b.fenster->windowTitle(), u"Merkkasten Ändern"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QCOMPARE(b.Text("MaskFachNr"), u"0"_s);
        QCOMPARE(b.Text("MFrage"), u"Frage 1"_s);
        QCOMPARE(b.Text("Antwort(0)"), u"Antwort 1"_s);
        QCOMPARE(b.Text("MaskThema"), u"Thema 1"_s);
        QVERIFY(!b.Neu());
        QVERIFY(b.Finde("MFrage")->hasFocus());
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
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        b.Tippe("MFrage", u"eins?"_s);
        b.Taste(Qt::Key_Tab);
        b.Tippe(u"ja"_s);
        QCOMPARE(b.Text("Antwort(0)"), u"ja"_s);
        b.Tippe("MaskThema", u"Zahlen"_s);
        b.Klick("Cadd");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.Text("MFrage"), QString());
        QCOMPARE(b.Text("MaskThema"), QString());
        QCOMPARE(b.kartei.store.HighestCardNumber, qint16(1));
        QCOMPARE(int(b.kartei.store.Felder().FrageNr.Integer()), 1);
        // The next card can be typed at once.
        QVERIFY(b.Finde("MFrage")->hasFocus());
        b.Tippe("MFrage", u"zwei?"_s);
        b.Tippe("Antwort(0)", u"nein"_s);
        b.Taste(Qt::Key_I, Qt::ControlModifier);
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        QCOMPARE(cards[0].Frage_Klartext, u"eins?"_s);
        QCOMPARE(cards[0].Picture_9_Name, u"Zahlen"_s);
        QVERIFY(cards[0].Frage.startsWith(u"{\\rtf"_s));
        QCOMPARE(cards[1].FrageNr, 2.0);
        QCOMPARE(cards[1].FachLfdNr, 2.0);
    }

    void NewCardComesInTheStandardFont()
    {
        EditorBuehne b({});
        b.konfig.schrift = {u"Liberation Serif"_s, 15, true, true, false, true, 0x0000FF};
        b.Zeigen();
        QVERIFY(!b.Box("MFrage")->document()->isUndoAvailable()); // the font least of all
        b.Tippe("MFrage", u"x"_s);
        b.Tippe("Antwort(4)", {});
        const QTextCharFormat format = b.Box("MFrage")->currentCharFormat();
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"Liberation Serif"_s));
        QCOMPARE(format.fontPointSize(), 15.0);
        QCOMPARE(format.fontWeight(), int(QFont::Bold));
        QVERIFY(format.fontItalic() && format.fontUnderline() && !format.fontStrikeOut());
        QCOMPARE(format.foreground().color(), QColor(255, 0, 0)); // red is the lowest byte
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("Cadd");
        const QString rtf = b.kartei.Stored()[0].Frage;
        QVERIFY(rtf.contains(u"Liberation Serif"_s));
        QVERIFY(rtf.contains(u"\\fs30"_s));
    }

    void TextOfSeveralLinesIsStoredWithCrLf()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippe("MFrage", u"a"_s);
        b.Taste(Qt::Key_Return);
        b.Tippe("MFrage", u"b"_s);
        b.Tippe("Antwort(0)", u"c"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, u"a\r\nb"_s);
    }

    void MissingQuestionIsSaidAndGetsTheFocus()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Frage eingegeben"_s));
        QVERIFY(b.Finde("MFrage")->hasFocus());
        QCOMPARE(b.Text("Antwort(0)"), u"a"_s);
        QCOMPARE(b.kartei.store.FehlerStatus, qint16(1));
    }

    void MissingAnswerIsSaidAndGetsTheFocus()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippe("MFrage", u"f"_s);
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Antwort eingegeben"_s));
        QVERIFY(b.Finde("Antwort(0)")->hasFocus());
    }

    void TickedEmptyAnswerIsRefused()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippe("MFrage", u"f"_s);
        b.Klick("Antwort_K");
        b.Tippe("Antwort(1)", u"a"_s);
        for (const char *kreuz : {"Check1(0)", "Check1(1)", "Check1(3)"})
            b.Klick(kreuz);
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Leere Antwort angekreuzt"_s));
        QVERIFY(b.Finde("Antwort(3)")->hasFocus());
        QVERIFY(b.kartei.Stored().isEmpty());
    }

    void TickCardWithoutATickIsStored()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Tippe("MFrage", u"f"_s);
        b.Klick("Antwort_K");
        b.Tippe("Antwort(1)", u"a"_s);
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antworttyp, 2.0);
        QVERIFY(!card.Antwort_ch_1 && !card.Antwort_ch_2);
        QCOMPARE(card.Antwort_2_Klartext, u"a"_s);
    }

    void TicksAreShownAsTheyWereStored()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        QVERIFY(b.Finde<QRadioButton>("Antwort_K")->isChecked());
        for (int i = 0; i < 5; ++i) {
            auto *kreuz = b.Finde<QCheckBox>(qPrintable(u"Check1(%1)"_s.arg(i)));
            QVERIFY(kreuz->isVisible());
            QCOMPARE(kreuz->isChecked(), i == 1 || i == 4);
            QVERIFY(b.Finde(qPrintable(u"Antwort(%1)"_s.arg(i)))->isVisible());
        }
    }

    void SwitchingTheTypeKeepsTextsAndTicks()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QRect frage = b.Finde("MFrage")->geometry();
        const QPoint knopf = b.Finde("Cadd")->pos();
        QCOMPARE(b.Finde("Antwort(0)")->size(), b.Finde("Antwort(1)")->size());
        b.Klick("Antwort_T");
        QApplication::processEvents();
        const int hoch = b.Finde("Antwort(0)")->height();
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(b.Finde(qPrintable(u"Antwort(%1)"_s.arg(i)))->isVisible(), i == 0);
            QVERIFY(!b.Finde(qPrintable(u"Check1(%1)"_s.arg(i)))->isVisible());
        }
        b.Klick("Antwort_K");
        QApplication::processEvents();
        QVERIFY(hoch > 3 * b.Finde("Antwort(0)")->height());
        QCOMPARE(b.Text("Antwort(4)"), u"fünf"_s);
        QVERIFY(b.Finde<QCheckBox>("Check1(4)")->isChecked());
        // Nothing else has moved.
        QCOMPARE(b.Finde("MFrage")->geometry(), frage);
        QCOMPARE(b.Finde("Cadd")->pos(), knopf);
    }

    void TheArrowsStayUnderTheMouseWhateverCardIsShown()
    {
        QList<CardRecord> karten;
        for (qint16 i = 1; i <= 12; ++i)
            karten << MakeCard(i, 0, i);
        EditorBuehne b(karten);
        b.Zeigen();
        const QPoint ort = b.Finde("CEOF")->pos();
        for (int i = 0; i < 11; ++i) {
            b.Klick("CVor");
            QCOMPARE(b.Finde("CEOF")->pos(), ort);
        }
        b.Klick("CEOF");
        QVERIFY(b.Neu());
        QCoreApplication::processEvents();
        QCOMPARE(b.Finde("CEOF")->pos(), ort);
    }

    void NumberThatWasTypedAndNotConfirmedGoesAgain_data()
    {
        QTest::addColumn<Qt::Key>("taste");
        QTest::newRow("Tab") << Qt::Key_Tab;
        QTest::newRow("Escape") << Qt::Key_Escape;
    }

    void NumberThatWasTypedAndNotConfirmedGoesAgain()
    {
        QFETCH(Qt::Key, taste);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MaskFrageNr", u"99"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"99"_s);
        b.Taste(taste);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QVERIFY(b.fenster->isVisible());
    }

    void TypingGoesOnInTheQuestionAfterTheJumpToANewCard()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Finde("CEOF")->setFocus();
        b.Taste(Qt::Key_Space);
        QVERIFY(b.Neu());
        QTest::keyClicks(b.fenster->focusWidget(), u"Neues"_s);
        QCOMPARE(b.Text("MFrage"), u"Neues"_s);
    }

    void TextAnswerHasItsWholeFieldAndALineOfATickCardLeavesTheTickItsRoom()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        const auto rechts = [&b] {
            QWidget *box = b.Finde("Antwort(0)");
            return box->parentWidget()->width() - box->geometry().right();
        };
        b.Klick("Antwort_K");
        QTRY_VERIFY(rechts() > b.Finde("Check1(0)")->width());
        b.Klick("Antwort_T");
        QTRY_VERIFY(rechts() < 12);
    }

    void LineOfATickCardShowsALineOfTheStandardFontWithoutAScrollBar()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.fenster->resize(b.fenster->minimumSizeHint());
        b.Klick("CEOF");
        b.Klick("Antwort_K");
        b.Tippe("Antwort(1)", u"Grafin"_s);
        QApplication::processEvents();
        for (const char *name : {"Antwort(0)", "Antwort(1)"})
            QVERIFY2(!b.Box(name)->verticalScrollBar()->isVisible(), name);
    }

    void TickCardStoredAsTextKeepsItsTicksInTheRecord()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Klick("Check1(0)");
        b.Klick("Check1(4)");
        QVERIFY(b.Finde<QCheckBox>("Check1(0)")->isChecked() &&
                !b.Finde<QCheckBox>("Check1(4)")->isChecked());
        b.Klick("Antwort_T");
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antworttyp, 1.0);
        QVERIFY(!card.Antwort_ch_1 && card.Antwort_ch_2 && card.Antwort_ch_5);
        QCOMPARE(card.Antwort_5_Klartext, u"fünf"_s);
    }

    void TextCardWithItsAnswerInAHiddenBoxIsStored()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antwort_1 = card.Antwort_1_Klartext = QString();
        card.Antwort_3 = card.Antwort_3_Klartext = u"drei"_s;
        EditorBuehne b({card});
        b.Zeigen();
        b.Tippe("MFrage", u"x"_s);
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, u"xFrage 1"_s);
    }

    void EmptiedAnswerKeepsItsPlainTextInTheRecord()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Ersetze("Antwort(2)", {});
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antwort_3_Klartext, u"drei"_s);
        QVERIFY(!card.Antwort_3.contains(u"drei"_s));
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
        b.Ersetze("MFrage", u"neu"_s);
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
        b.Ersetze("MFrage", u"neu"_s);
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte(), QStringList());
        QVERIFY(b.Finde("Antwort(0)")->isVisible() && !b.Finde("Antwort(2)")->isVisible());
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Frage_Klartext, u"neu"_s);
        QVERIFY(stored.Antwort_ch_3);
    }

    void TickCardKeptAsTextHasItsTicksWhenItIsTickedAgain()
    {
        EditorBuehne b({Tickkarte(1), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Klick("Antwort_T");
        b.Klick("CVor");
        b.Klick("CZurück");
        QVERIFY(b.Finde<QRadioButton>("Antwort_T")->isChecked());
        b.Klick("Antwort_K");
        for (int i = 0; i < 5; ++i)
            QCOMPARE(b.Finde<QCheckBox>(qPrintable(u"Check1(%1)"_s.arg(i)))->isChecked(), i == 1 || i == 4);
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Antworttyp, 2.0);
        QVERIFY(!card.Antwort_ch_1 && card.Antwort_ch_2 && card.Antwort_ch_5);
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
            b.Tippe("MFrage", u"neu "_s);
            break;
        case 1:
            b.Tippe("Antwort(4)", u"neu "_s);
            break;
        case 2:
            b.Ersetze("MaskThema", u"neu "_s);
            break;
        case 3:
            b.Klick("Check1(0)");
            break;
        case 4:
            b.Klick("Antwort_T");
            break;
        case 5:
            b.Finde("Antwort_K")->setFocus();
            b.Taste(Qt::Key_Left);
            break;
        case 6:
            b.Finde("Check1(0)")->setFocus();
            b.Taste(Qt::Key_Space);
            break;
        }
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext.startsWith(u"neu "_s), was == 0);
        QCOMPARE(card.Antwort_5_Klartext.startsWith(u"neu "_s), was == 1);
        QCOMPARE(card.Picture_9_Name, was == 2 ? u"neu "_s : u"Thema 1"_s);
        QCOMPARE(card.Antwort_ch_1, was == 3 || was == 6);
        QCOMPARE(card.Antworttyp, was == 4 || was == 5 ? 1.0 : 2.0);
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

PAUKFIX_TEST(PFAendernKarteTest)
#include "PFAendernKarteTest.moc"
