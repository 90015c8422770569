// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zwischenablage.h"

#include "RichTextBox.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>
#include <QTextBlock>
#include <QTextList>

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
        mime->setText(QStringLiteral("nicht dieser"));
        QApplication::clipboard()->setMimeData(mime);
        QTest::keyClick(box_.get(), Qt::Key_V, Qt::ControlModifier);
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

QTEST_MAIN(ZwischenablageTest)
#include "ZwischenablageTest.moc"
