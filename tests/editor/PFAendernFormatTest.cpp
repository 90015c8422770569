// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CharFormat.h"
#include "EditorBuehne.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QClipboard>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// A card whose question is "aaa bbb ccc", the middle word italic.
CardRecord Gemischt()
{
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = uR"({\rtf1{\fonttbl{\f0 Liberation Serif;}}\f0\fs24 aaa \i bbb\i0  ccc\par})"_s;
    card.Frage_Klartext = u"aaa bbb ccc"_s;
    return card;
}

QTextCharFormat FormatBei(EditorBuehne &b, int stelle, const char *box = "MFrage")
{
    QTextCursor cursor(b.Box(box)->document());
    cursor.setPosition(stelle + 1);
    return cursor.charFormat();
}

bool Fett(EditorBuehne &b, int stelle)
{
    return FormatBei(b, stelle).fontWeight() >= QFont::DemiBold;
}

QString Gespeichert(EditorBuehne &b)
{
    b.Klick("CVor");
    return b.kartei.Stored()[0].Frage;
}

// Claims every key for the box that it is installed on, as a desktop's own key bindings may.
class Beansprucher final : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        return false;
    }
};

} // namespace

class PFAendernFormatTest : public QObject
{
    Q_OBJECT

private slots:

    void MenuIsEnabledWhileATextBoxHasTheFocus_data()
    {
        QTest::addColumn<QString>("feld");
        QTest::addColumn<bool>("an");
        for (const char *feld : {"MFrage", "Antwort(0)", "Antwort(4)"})
            QTest::newRow(feld) << QString::fromUtf8(feld) << true;
        for (const char *feld : {"MaskThema", "MaskFrageNr", "Antwort_K", "Check1(2)", "Cadd"})
            QTest::newRow(feld) << QString::fromUtf8(feld) << false;
    }

    void MenuIsEnabledWhileATextBoxHasTheFocus()
    {
        QFETCH(QString, feld);
        QFETCH(bool, an);
        CardRecord card = Gemischt();
        card.Antworttyp = 2;
        EditorBuehne b({card});
        b.Zeigen();
        b.Finde(an ? "Cadd" : "MFrage")->setFocus();
        b.Finde(qPrintable(feld))->setFocus();
        QCOMPARE(b.Finde<QAction>("MFont")->isEnabled(), an);
        QCOMPARE(b.Finde<QAction>("MFontFett")->isEnabled(), an);
        QCOMPARE(b.Finde<QAction>("MSchriftart")->isEnabled(), an);
    }

    void MenuIsDisabledAlsoWhenTheMenuBarHadTheKeyboardBetween()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.fenster->menuBar()->setFocus(Qt::MenuBarFocusReason);
        QVERIFY(b.Finde<QAction>("MFontFett")->isEnabled());
        b.Klick("MaskThema");
        QVERIFY(b.Finde("MaskThema")->hasFocus());
        QVERIFY(!b.Finde<QAction>("MFontFett")->isEnabled());
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(b.Box("MFrage")->currentCharFormat().fontWeight() <= QFont::Normal);
    }

    void OpeningTheMenuDoesNotDisableIt()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Menue("MFont", "MFontFett");
        QVERIFY(Fett(b, 0));
        QVERIFY(!Fett(b, 4));
        // By the keyboard, through the menu bar.
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_O, Qt::AltModifier);
        auto *liste = b.Finde<QMenu>("MFont");
        QTRY_VERIFY(liste->isVisible());
        QTest::keyClick(liste, Qt::Key_F);
        QTRY_VERIFY(!Fett(b, 0));
    }

    void KeysOfTheMenuHoldAgainstTheTextBox_data()
    {
        QTest::addColumn<Qt::Key>("taste");
        QTest::newRow("Ctrl+F") << Qt::Key_F;
        QTest::newRow("Ctrl+K") << Qt::Key_K;
        QTest::newRow("Ctrl+U") << Qt::Key_U;
        QTest::newRow("Ctrl+H") << Qt::Key_H;
        QTest::newRow("Ctrl+N") << Qt::Key_N;
        QTest::newRow("Ctrl+T") << Qt::Key_T;
    }

    void KeysOfTheMenuHoldAgainstTheTextBox()
    {
        QFETCH(Qt::Key, taste);
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        Beansprucher desktop;
        b.Box("MFrage")->installEventFilter(&desktop);
        b.Auswaehlen("MFrage", 0, 3);
        b.Taste(taste, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"aaa bbb ccc"_s);
        const QTextCharFormat format = FormatBei(b, 0);
        const bool klein = taste == Qt::Key_H || taste == Qt::Key_T;
        QCOMPARE(format.fontWeight() >= QFont::DemiBold, taste == Qt::Key_F || klein);
        QCOMPARE(format.fontItalic(), taste == Qt::Key_K);
        QCOMPARE(format.fontUnderline(), taste == Qt::Key_U);
        QCOMPARE(CharOffset(format), taste == Qt::Key_H ? 50 : taste == Qt::Key_T ? -20 : 0);
        QVERIFY(!FormatBei(b, 9).fontItalic());
    }

    void LineBoxKeepsItsOwnKeys()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Finde("MaskThema")->setFocus();
        b.Taste(Qt::Key_Home);
        b.Taste(Qt::Key_K, Qt::ControlModifier);
        QVERIFY(!FormatBei(b, 0).fontItalic());
    }

    void TogglesChangeAUniformSelectionAndSetAMixedOne()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Taste(Qt::Key_U, Qt::ControlModifier);
        QVERIFY(Fett(b, 0) && FormatBei(b, 0).fontUnderline());
        b.Auswaehlen("MFrage", 0, 7); // mixed: all of it gets the attribute
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Taste(Qt::Key_U, Qt::ControlModifier);
        QVERIFY(Fett(b, 0) && Fett(b, 5) && FormatBei(b, 5).fontUnderline());
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Taste(Qt::Key_U, Qt::ControlModifier);
        QVERIFY(!Fett(b, 0) && !Fett(b, 5) && !FormatBei(b, 5).fontUnderline());
        QVERIFY(!Fett(b, 9));
    }

    void ItalicOnAMixedSelectionMakesItBoldAndLeavesItalicAsItWas()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 11);
        b.Taste(Qt::Key_K, Qt::ControlModifier);
        QVERIFY(Fett(b, 0) && Fett(b, 5) && Fett(b, 9));
        QVERIFY(!FormatBei(b, 0).fontItalic() && FormatBei(b, 5).fontItalic() &&
                !FormatBei(b, 9).fontItalic());
        b.Auswaehlen("MFrage", 4, 7);
        b.Taste(Qt::Key_K, Qt::ControlModifier);
        QVERIFY(!FormatBei(b, 5).fontItalic());
    }

    void RaisedThenNormalStaysSmallAndBoldOnTheBaseLine()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Taste(Qt::Key_H, Qt::ControlModifier);
        QCOMPARE(CharOffset(FormatBei(b, 0)), 50);
        b.Taste(Qt::Key_N, Qt::ControlModifier);
        const QTextCharFormat format = FormatBei(b, 0);
        QCOMPARE(CharOffset(format), 0);
        QCOMPARE(format.baselineOffset(), 0.0);
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"Small Fonts"_s));
        QCOMPARE(format.fontPointSize(), 7.0);
        QVERIFY(Fett(b, 0));
    }

    void RaisedAndLoweredTextIsStoredInHalfPoints()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Menue("MFont", "MFonthoch");
        b.Auswaehlen("MFrage", 8, 11);
        b.Menue("MFont", "MFontTief");
        const QString rtf = Gespeichert(b);
        QVERIFY(rtf.contains(u"\\up5"_s));
        QVERIFY(rtf.contains(u"\\dn2"_s));
        QVERIFY(rtf.contains(u"Small Fonts"_s));
        QTextDocument document;
        SetRichText(document, rtf);
        QTextCursor cursor(&document);
        cursor.setPosition(1);
        QCOMPARE(CharOffset(cursor.charFormat()), 50);
        cursor.setPosition(11);
        QCOMPARE(CharOffset(cursor.charFormat()), -20);
    }

    void TogglesOnAnEmptySelectionChangeWhatIsTyped()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 3, 3);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Tippe("MFrage", u"XY"_s);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Taste(Qt::Key_K, Qt::ControlModifier);
        b.Tippe("MFrage", u"Z"_s);
        QCOMPARE(b.Text("MFrage"), u"aaaXYZ bbb ccc"_s);
        QVERIFY(!Fett(b, 2) && Fett(b, 3) && Fett(b, 4) && !Fett(b, 5));
        QVERIFY(FormatBei(b, 5).fontItalic() && !FormatBei(b, 4).fontItalic());
    }

    void EveryCommandActsAtTheCaretOnAnEmptySelection_data() { KeysOfTheMenuHoldAgainstTheTextBox_data(); }

    void EveryCommandActsAtTheCaretOnAnEmptySelection()
    {
        QFETCH(Qt::Key, taste);
        EditorBuehne b({Gemischt(), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Auswaehlen("MFrage", 2, 2);
        if (taste == Qt::Key_N)
            b.Taste(Qt::Key_H, Qt::ControlModifier); // so that there is something to take back
        b.Taste(taste, Qt::ControlModifier);
        b.Tippe("MFrage", u"X"_s);
        QCOMPARE(b.Text("MFrage"), u"aaXa bbb ccc"_s);
        const bool klein = taste == Qt::Key_H || taste == Qt::Key_T || taste == Qt::Key_N;
        for (const int stelle : {1, 2, 3}) {
            const bool neu = stelle == 2;
            const QTextCharFormat format = FormatBei(b, stelle);
            QCOMPARE(format.fontWeight() >= QFont::DemiBold, neu && (taste == Qt::Key_F || klein));
            QCOMPARE(format.fontItalic(), neu && taste == Qt::Key_K);
            QCOMPARE(format.fontUnderline(), neu && taste == Qt::Key_U);
            QCOMPARE(format.fontPointSize(), neu && klein ? 7.0 : 12.0);
            QCOMPARE(CharOffset(format), neu && taste == Qt::Key_H   ? 50
                                         : neu && taste == Qt::Key_T ? -20
                                                                     : 0);
        }
    }

    void CommandAtTheCaretAloneIsNoChange()
    {
        const CardRecord card = Gemischt();
        EditorBuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Auswaehlen("MFrage", 2, 2);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0], card);
    }

    void CommandsActOnTheBoxWithTheFocus()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Auswaehlen("Antwort(0)", 0, 3);
        b.Menue("MFont", "MFontFett");
        QVERIFY(!Fett(b, 0));
        QVERIFY(FormatBei(b, 0, "Antwort(0)").fontWeight() >= QFont::DemiBold);
    }

    void FormattingIsAChangeAndCanBeUndone()
    {
        EditorBuehne b({Gemischt(), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Taste(Qt::Key_H, Qt::ControlModifier);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(CharOffset(FormatBei(b, 0)), 0);
        QVERIFY(!Fett(b, 0));
        b.Taste(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(CharOffset(FormatBei(b, 0)), 50);
        QVERIFY(Fett(b, 0));
        QVERIFY(Gespeichert(b).contains(u"\\up5"_s));
    }

    void FontDialogWantsASelection()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 3, 3);
        b.Menue("MFont", "MSchriftart");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Bitte erst Text Auswählen"_s));
        QVERIFY(!b.dialoge.schriftVorgabe);
    }

    void FontDialogStartsFromTheSelectionAndSetsAllOfIt()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        QFont font(u"Liberation Mono"_s, 18);
        font.setBold(true);
        font.setStrikeOut(true);
        font.setUnderline(true);
        b.dialoge.schrift = Schriftwahl{font, QColor(Qt::red)};
        b.Auswaehlen("MFrage", 4, 7);
        b.Menue("MFont", "MSchriftart");
        const Schriftwahl vorgabe = b.dialoge.schriftVorgabe.value();
        QCOMPARE(vorgabe.font.family(), u"Liberation Serif"_s);
        QCOMPARE(vorgabe.font.pointSizeF(), 12.0);
        QVERIFY(vorgabe.font.italic() && !vorgabe.font.bold());
        const QTextCharFormat format = FormatBei(b, 5);
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"Liberation Mono"_s));
        QCOMPARE(format.fontPointSize(), 18.0);
        QVERIFY(Fett(b, 5) && !format.fontItalic() && format.fontStrikeOut() && format.fontUnderline());
        QCOMPARE(format.foreground().color(), QColor(Qt::red));
        QVERIFY(!Fett(b, 1));
        QVERIFY(Gespeichert(b).contains(u"\\red255"_s));
    }

    void FontDialogPresetsOnlyWhatTheWholeSelectionShares()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 7);
        b.Taste(Qt::Key_U, Qt::ControlModifier);
        b.Menue("MFont", "MSchriftart"); // is cancelled
        const Schriftwahl vorgabe = b.dialoge.schriftVorgabe.value();
        QVERIFY(!vorgabe.font.italic()); // mixed
        QVERIFY(vorgabe.font.underline());
        QVERIFY(FormatBei(b, 5).fontItalic() && !FormatBei(b, 0).fontItalic());
    }

    // --- The clipboard

    void OwnBoxesKeepEverything()
    {
        CardRecord card = Gemischt();
        card.Frage =
            uR"({\rtf1{\fonttbl{\f0 Liberation Serif;}}{\colortbl;\red200\green0\blue0;}\qc\li300\f0)"
            uR"(\fs36\cf1\b Ein\up5 hoch\up0\ul unter\strike durch\par\pard\plain\i zwei\~drei\par})"_s;
        EditorBuehne b({card});
        b.Zeigen();
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_A, Qt::ControlModifier);
        b.Taste(Qt::Key_C, Qt::ControlModifier);
        b.Finde("Antwort(0)")->setFocus();
        b.Taste(Qt::Key_A, Qt::ControlModifier);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(ToRtf(*b.Box("Antwort(0)")->document()), ToRtf(*b.Box("MFrage")->document()));
        // Other programs get plain text as they expect it, with the no-break space.
        QCOMPARE(QApplication::clipboard()->text(), u"Einhochunterdurch\nzwei\u00A0drei"_s);
        QVERIFY(QApplication::clipboard()->mimeData()->hasHtml());
        QVERIFY(QApplication::clipboard()->mimeData()->data(u"text/rtf"_s).startsWith("{\\rtf"));
    }

    void PartOfALineIsPastedIntoTheLine()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 4, 7);
        b.Taste(Qt::Key_C, Qt::ControlModifier);
        b.Auswaehlen("Antwort(0)", 3, 3);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("Antwort(0)"), u"Antbbbwort 1"_s);
        QVERIFY(FormatBei(b, 4, "Antwort(0)").fontItalic());
        QVERIFY(!FormatBei(b, 0, "Antwort(0)").fontItalic());
    }

    void PasteFromABrowserKeepsTextAndDropsTablesAndPictures()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        auto *mime = new QMimeData;
        mime->setHtml(
            u"<html><head><link rel='stylesheet' href='file:///etc/passwd'></head><body><p>Ein <b>fettes</b> "
            u"<span "
            u"style='color:#00aa00'>Wort</span><img src='file:///etc/hostname'><img "
            u"src='http://127.0.0.1:9/x.png'></p>"
            u"<table border='1'><tr><td>links</td><td style='background:#ff0'>rechts</td></tr></table>"
            u"<ul><li>Punkt</li></ul></body></html>"_s);
        mime->setText(u"nur Text"_s);
        QApplication::clipboard()->setMimeData(mime);
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_A, Qt::ControlModifier);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        // The table's texts are lines of their own.
        QCOMPARE(b.Box("MFrage")->PlainText(), u"Ein fettes Wort\r\nlinks\trechts\r\n\r\n• Punkt"_s);
        QVERIFY(Fett(b, 5));
        QCOMPARE(FormatBei(b, 12).foreground().color(), QColor(0, 0xAA, 0));
        const QTextDocument *dokument = b.Box("MFrage")->document();
        QVERIFY(!dokument->toRawText().contains(QChar::ObjectReplacementCharacter));
        QVERIFY(dokument->rootFrame()->childFrames().isEmpty());
        for (QTextBlock block = dokument->begin(); block.isValid(); block = block.next()) {
            QVERIFY(!block.textList());
            for (auto teil = block.begin(); !teil.atEnd(); ++teil)
                QVERIFY(!teil.fragment().charFormat().hasProperty(QTextFormat::BackgroundBrush));
        }
        // Reading it back gives the same: nothing is there that could not be stored.
        const QString rtf = ToRtf(*dokument);
        QTextDocument gelesen;
        SetRichText(gelesen, rtf);
        QCOMPARE(gelesen.toPlainText(), dokument->toPlainText());
    }

    void PasteFromAWordProcessorTakesItsRtf()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        auto *mime = new QMimeData;
        mime->setData(u"text/rtf"_s, "{\\rtf1\\ansi gr\\'fc\\b n\\b0\\par}");
        mime->setHtml(u"<i>falsch</i>"_s);
        QApplication::clipboard()->setMimeData(mime);
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_A, Qt::ControlModifier);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"grün"_s);
        QVERIFY(Fett(b, 3) && !Fett(b, 0));
    }

    void PlainTextTakesTheFormatAtTheCaret()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        QApplication::clipboard()->setText(u"<b>neu</b>"_s);
        b.Auswaehlen("MFrage", 5, 5);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"aaa b<b>neu</b>bb ccc"_s);
        QVERIFY(FormatBei(b, 8).fontItalic());
    }

    void PastedPictureAndNonsenseAreNotTaken()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        QApplication::clipboard()->setImage(QImage(10, 10, QImage::Format_RGB32));
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"aaa bbb ccc"_s);
        auto *mime = new QMimeData;
        mime->setData(u"text/rtf"_s, "no rtf at all");
        mime->setText(u"Text"_s);
        QApplication::clipboard()->setMimeData(mime);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"Textaaa bbb ccc"_s);
    }

    void PastingCanBeUndoneInOneStep()
    {
        EditorBuehne b({Gemischt()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 11);
        b.Taste(Qt::Key_C, Qt::ControlModifier);
        b.Auswaehlen("Antwort(0)", 0, 3);
        b.Taste(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("Antwort(0)"), u"aaa bbb cccwort 1"_s);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text("Antwort(0)"), u"Antwort 1"_s);
    }
};

PAUKFIX_TEST(PFAendernFormatTest)
#include "PFAendernFormatTest.moc"
