// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zwischenablage.h"

#include "RichTextBox.h"
#include "TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTextBlock>
#include <QTextList>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

struct Format
{
    QString familie;
    double punkte = 0;
    bool fett = false;

    bool operator==(const Format &) const = default;
};

} // namespace

// A box whose caret writes 10 points of Liberation Serif, and what is pasted into it.
class ZwischenablageTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RichTextBox> box_;

    void Einfuegen(const QString &html)
    {
        auto *mime = new QMimeData;
        mime->setHtml(html);
        mime->setText(u"nicht dieser"_s);
        QApplication::clipboard()->setMimeData(mime);
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
    }

    // At the end of the text, from elsewhere. Tells what the source learns of it.
    Qt::DropAction Fallenlassen(QMimeData *mime, Qt::DropAction angeboten = Qt::CopyAction)
    {
        const std::unique_ptr<QMimeData> besitz(mime);
        const QPoint ort = box_->cursorRect().center();
        QDragEnterEvent enter(ort, angeboten, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box_->viewport(), &enter);
        QDropEvent drop(ort, angeboten, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box_->viewport(), &drop);
        return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
    }

    // Of the first place where this text stands.
    Format Bei(const QString &text)
    {
        QTextCursor cursor = box_->document()->find(text);
        const QTextCharFormat format = cursor.charFormat();
        return {format.fontFamilies().toStringList().value(0), format.fontPointSize(),
                format.fontWeight() >= QFont::DemiBold};
    }

private slots:

    void init()
    {
        box_ = std::make_unique<RichTextBox>();
        box_->ZeigeRichText(R"({\rtf1{\fonttbl{\f0 Liberation Serif;}}\f0\fs20 alt \par})");
        box_->show();
        QVERIFY(QTest::qWaitForWindowActive(box_.get()));
        box_->moveCursor(QTextCursor::End);
    }

    void TextWithoutAFontHasTheCarets()
    {
        Einfuegen("<p>eins <b>zwei</b></p>");
        QCOMPARE(box_->PlainText(), "alt eins zwei");
        QCOMPARE(Bei("eins"), (Format{"Liberation Serif", 10, false}));
        QCOMPARE(Bei("zwei"), (Format{"Liberation Serif", 10, true}));
        QVERIFY2(!box_->RichText().contains("\\plain eins"), qPrintable(box_->RichText()));
    }

    void AnEmptyLineHasTheCaretsFontToo()
    {
        Einfuegen("<p>eins</p><p style='-qt-paragraph-type:empty'><br></p><p>zwei</p>");
        const QTextBlock leer = box_->document()->begin().next();
        QCOMPARE(leer.text(), QString());
        QCOMPARE(leer.charFormat().fontPointSize(), 10.0);
    }

    void AFontOfItsOwnIsKept()
    {
        Einfuegen("<p style=\"font-family:'Liberation Mono';font-size:14pt\">eins</p>"
                  "<p style=\"font-size:16px\">zwei</p>");
        QCOMPARE(Bei("eins"), (Format{"Liberation Mono", 14, false}));
        QCOMPARE(Bei("zwei"), (Format{"Liberation Serif", 12, false}));
    }

    void SizesOfHeadingsAreOfTheCarets_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<double>("punkte");
        QTest::addColumn<bool>("fett");
        QTest::newRow("h1") << "<h1>Titel</h1>" << 20.0 << true;
        QTest::newRow("h2") << "<h2>Titel</h2>" << 15.0 << true;
        QTest::newRow("h3") << "<h3>Titel</h3>" << 12.0 << true;
        QTest::newRow("h4") << "<h4>Titel</h4>" << 10.0 << true;
        QTest::newRow("small") << "<small>Titel</small>" << 8.0 << false;
        QTest::newRow("big") << "<big>Titel</big>" << 12.0 << false;
        QTest::newRow("named") << "<span style='font-size:x-large'>Titel</span>" << 15.0 << false;
    }

    void SizesOfHeadingsAreOfTheCarets()
    {
        QFETCH(QString, html);
        QFETCH(double, punkte);
        QFETCH(bool, fett);
        Einfuegen(html);
        QCOMPARE(Bei("Titel"), (Format{"Liberation Serif", punkte, fett}));
    }

    void WithoutAFontAtTheCaretOnlyHeadingsAreSized()
    {
        box_->ZeigeRichText({});
        const double hier = box_->document()->defaultFont().pointSizeF();
        Einfuegen("<h1>Titel</h1><p>eins</p>");
        QCOMPARE(Bei("Titel"), (Format{{}, 2 * hier, true}));
        QCOMPARE(Bei("eins"), (Format{{}, 0, false}));
    }

    void ListsKeepTheirBulletsAndNumbers_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        QTest::newRow("bullets") << "<ul><li>a</li><li><b>b</b></li></ul>"
                                 << "• a\r\n• b";
        QTest::newRow("numbers") << "<ol><li>a</li><li>b</li><li>c</li></ol>"
                                 << "1. a\r\n2. b\r\n3. c";
        QTest::newRow("letters") << "<ol type='a'><li>x</li><li>y</li></ol>"
                                 << "a. x\r\nb. y";
        QTest::newRow("within a list") << "<ol><li>a<ul><li>b</li><li>c</li></ul></li><li>d</li></ol>"
                                       << "1. a\r\n• b\r\n• c\r\n2. d";
        QTest::newRow("numbers from another start") << "<ol start='9' class=x><li>a</li><li>b</li></ol>"
                                                    << "9. a\r\n10. b";
        QTest::newRow("letters from another start") << "<OL TYPE=A START=26><LI>a<LI>b</OL>"
                                                    << "Z. a\r\nAA. b";
        QTest::newRow("Roman numbers")
            << "<ol style='list-style-type:lower-roman' start=\"4\"><li>a<li>b</ol>"
            << "iv. a\r\nv. b";
        QTest::newRow("a start of its own within a list")
            << "<ol start=5><li>a<ol><li>b</ol><li>c</ol><ol><li>d</ol>"
            << "5. a\r\n1. b\r\n6. c\r\n1. d";
        QTest::newRow("a start that is no number") << "<ol start=x><li>a</ol>"
                                                   << "1. a";
        QTest::newRow("between paragraphs") << "<p>vor</p><ul><li>a</li></ul><p>nach</p>"
                                            << "vor\r\n• a\r\nnach";
    }

    void ListsKeepTheirBulletsAndNumbers()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        box_->selectAll();
        Einfuegen(html);
        QCOMPARE(box_->PlainText().trimmed(), text);
        QVERIFY(!box_->document()->begin().textList());
        const QString zeichen = text.section(u' ', 0, 0);
        QVERIFY(zeichen.startsWith("vor") || Bei(zeichen) == (Format{"Liberation Serif", 10, false}));
    }

    void AListWithinAListIsSetIn()
    {
        box_->selectAll();
        Einfuegen("<ul><li>a<ul><li>b</li></ul></li></ul>");
        const double aussen = box_->document()->find("a").blockFormat().leftMargin();
        QVERIFY(box_->document()->find("b").blockFormat().leftMargin() > aussen);
    }

    void TablesAreParagraphsWithTabs_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        QTest::newRow("rows and cells")
            << "<table border=1><tr><th>H</th><th>I</th></tr><tr><td>a</td><td></td><td>c</td></tr></table>"
            << "H\tI\r\na\t\tc";
        QTest::newRow("between texts") << "vor<table><tr><td>a</td><td>b</td></tr></table>nach"
                                       << "vor\r\na\tb\r\nnach";
        QTest::newRow("cells over columns and rows")
            << "<table><tr><td rowspan=2>a</td><td colspan=2>b</td><td>c</td></tr><tr><td>d</td></tr></table>"
            << "a\tb\t\tc\r\n\td";
        QTest::newRow("paragraphs in a cell") << "<table><tr><td><p>a</p><p>b</p></td><td>c</td></tr></table>"
                                              << "a\r\nb\tc";
        QTest::newRow("a table in a cell")
            << "<table><tr><td>a<table><tr><td>n</td><td>m</td></tr></table>b</td><td>c</td></tr></table>"
            << "a\r\nn\tm\r\nb\tc";
        QTest::newRow("one after the other")
            << "<table><tr><td>a</td></tr></table><table><tr><td>b</td><td>c</td></tr></table>"
            << "a\r\nb\tc";
    }

    void TablesAreParagraphsWithTabs()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        box_->selectAll();
        Einfuegen(html);
        QCOMPARE(box_->PlainText(), text);
    }

    void HiddenPartsAreLeftOut_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        QTest::newRow("in a line") << "a<span style='color:red; Display : NONE'>x</span>b"
                                   << "ab";
        QTest::newRow("with more in it") << "a<div style=\"display:none\"><p>x<b>y</b><div>z</div></div>b"
                                         << "ab";
        QTest::newRow("attribute") << "<p>a</p><p hidden>x</p><p>b</p>"
                                   << "a\r\nb";
        QTest::newRow("paragraph without an end") << "<p style='display:none'>x<p>b"
                                                  << "b";
        QTest::newRow("item without an end") << "<ul><li>a<li style='display:none'>x<li>b</ul>c"
                                             << "• a\r\n• b\r\nc";
        QTest::newRow("cell without an end") << "<table><tr><td>a<td style='display:none'>x<td>b</table>"
                                             << "a\tb";
        QTest::newRow("end of what lies around") << "<div>a<span style='display:none'>x</div><p>b"
                                                 << "a\r\nb";
        QTest::newRow("no element") << "a<img hidden>b<!-- <p hidden> -->c"
                                    << "abc";
        QTest::newRow("another word") << "<p style='mso-display:none-x;list-style:none'>a</p>"
                                      << "a";
        QTest::newRow("sign that begins no tag") << "a < b <i>c</i> &lt;p hidden&gt;"
                                                 << "a < b c <p hidden>";
        QTest::newRow("never ends") << "a<p hidden"
                                    << "a";
    }

    void HiddenPartsAreLeftOut()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        box_->selectAll();
        Einfuegen(html);
        QCOMPARE(box_->PlainText().trimmed(), text);
    }

    void WhatIsDroppedHasTheSameLimit()
    {
        QStringList gruende;
        box_->bei_Ablehnung = [&](const QString &grund) { gruende << grund; };
        auto *klein = new QMimeData;
        klein->setText(QString(2'000, u'a'));
        Fallenlassen(klein);
        QCOMPARE(box_->PlainText(), "alt " + QString(2'000, u'a'));
        const QString rtf = box_->RichText();
        for (const QString &text : {QString(2'000'000, u'a'), QString(500'000, u'\n')}) {
            auto *gross = new QMimeData;
            gross->setText(text);
            Fallenlassen(gross);
            QTRY_COMPARE(gruende.size(), 1);
            QVERIFY2(gruende.takeFirst().startsWith("Dieser Text ist zu groß und wurde nicht eingefügt."),
                     "");
            QCOMPARE(box_->RichText(), rtf);
            QVERIFY(!box_->document()->isRedoAvailable());
        }
    }

    void WhatIsTooMuchWorkIsNotCalledTooLong_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<bool>("zuGross");
        const auto oft = [](const char *teil, int mal) { return QString::fromLatin1(teil).repeated(mal); };
        QTest::newRow("items") << "<ul>" + oft("<li>a", 4'001) + "</ul>" << false;
        QTest::newRow("depth") << oft("<div>", 501) + "a" << false;
        QTest::newRow("rules") << "<style>" + oft("p{color:red}", 20'000) + "</style>" +
                                      oft("<p>a</p>", 1'000)
                               << false;
        QTest::newRow("characters") << "<p>" + oft("a", 1'500'000) << true;
        QTest::newRow("far more characters") << "<p>" + oft("a", 2'500'000) << true;
    }

    void WhatIsTooMuchWorkIsNotCalledTooLong()
    {
        QFETCH(QString, html);
        QFETCH(bool, zuGross);
        QStringList gruende;
        box_->bei_Ablehnung = [&](const QString &grund) { gruende << grund; };
        Einfuegen(html);
        QTRY_COMPARE(gruende.size(), 1);
        const char *anfang = zuGross ? "Dieser Text ist zu groß und" : "Dieser Text ist zu verschachtelt und";
        QVERIFY2(gruende[0].startsWith(anfang), qPrintable(gruende[0]));
        QCOMPARE(box_->PlainText(), "alt ");
    }

    // The source takes it out of its own text then.
    void WhatIsMovedHereIsTakenOnlyWhereItFits()
    {
        QStringList gruende;
        box_->bei_Ablehnung = [&](const QString &grund) { gruende << grund; };
        auto *klein = new QMimeData;
        klein->setText("neu");
        QCOMPARE(Fallenlassen(klein, Qt::MoveAction), Qt::MoveAction);
        QCOMPARE(box_->PlainText(), "alt neu");
        auto *formatiert = new QMimeData;
        formatiert->setHtml("<p>" + QString(1'500'000, u'a') + "</p>");
        auto *voll = new QMimeData;
        voll->setText(QString(2'000'000, u'a'));
        for (QMimeData *gross : {formatiert, voll}) {
            QCOMPARE(Fallenlassen(gross, Qt::MoveAction), Qt::IgnoreAction);
            QTRY_COMPARE(gruende.size(), 1);
            gruende.clear();
            QCOMPARE(box_->PlainText(), "alt neu");
        }
    }

    void LinesBreakBetweenWordsAgainWhenALongWordIsTakenBack()
    {
        const auto art = [this] { return box_->document()->defaultTextOption().wrapMode(); };
        const auto vorher = art();
        QApplication::clipboard()->setText(QString(2'000, u'a'));
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(art(), QTextOption::WrapAnywhere);
        QTest::keyClick(box_.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box_->PlainText(), "alt ");
        QCOMPARE(art(), vorher);
    }

    // Many pastes that fit one by one.
    void TheLimitIsThatOfTheWholeText()
    {
        int abgelehnt = 0;
        box_->bei_Ablehnung = [&](const QString &) { ++abgelehnt; };
        QApplication::clipboard()->setText(QString("wort ").repeated(60'000));
        for (int i = 0; i < 6; ++i) {
            QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
            QCoreApplication::processEvents();
        }
        const qsizetype laenge = box_->PlainText().size();
        QVERIFY(abgelehnt > 0 && laenge > 600'000);
        // In the place of everything it fits.
        abgelehnt = 0;
        box_->selectAll();
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
        QCoreApplication::processEvents();
        QCOMPARE(abgelehnt, 0);
        QCOMPARE(box_->PlainText().size(), 300'000);
        // What was taken is shown whole when it is read again.
        QVERIFY(RichTextBox().ZeigeRichText(box_->RichText()));
    }

    void HalfCharactersComeInAsReplacements()
    {
        box_->selectAll();
        QApplication::clipboard()->setText(QString("a") + QChar(0xD83D) + "b" + QChar(0xDE00) +
                                           QChar(0xFEFF));
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box_->PlainText(), u"a\uFFFDb\uFFFD\uFEFF"_s);
    }

    void BetweenOwnBoxesEverythingIsKept()
    {
        RichTextBox quelle;
        quelle.ZeigeRichText(
            R"({\rtf1{\fonttbl{\f0 Liberation Mono;}}\f0\fs36\b Ein\plain  zwei\par\i drei\par})");
        quelle.show();
        QVERIFY(QTest::qWaitForWindowActive(&quelle));
        QTest::keyClick(&quelle, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&quelle, Qt::Key_C, Qt::ControlModifier);
        box_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(box_.get()));
        QTest::keyClick(box_.get(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box_->RichText(), quelle.RichText());
    }
};

PAUKFIX_TEST(ZwischenablageTest)
#include "ZwischenablageTest.moc"
