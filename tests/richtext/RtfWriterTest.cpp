// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Describe.h"
#include "RichText.h"
#include "RtfTabs.h"
#include "TestProgram.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextList>
#include <QTextTable>

#include <functional>

using namespace paukfix;
using namespace Qt::StringLiterals;

class RtfWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void Writes_data();
    void Writes();
    void RandomDocumentsComeBackEqual();
    void EveryCharacterComesBack();
    void SymbolsKeepTheirFontAndCharacterSet();
    void StoringATextAgainChangesNothing();
    void UnsetFormatsTakeTheDefaultFont();
    void WhatRtfCannotHoldIsDropped();
    void FragmentsKeepTheirFormat();
    void FragmentOfOneLineDoesNotBreakTheLine();
    void ColourBlackIsAutomatic();
    void OffsetsEndSuperscript();
    void WordProcessorReadsTheText();
};

namespace {
bool IsSevenBit(const QString &rtf)
{
    return std::all_of(rtf.begin(), rtf.end(), [](QChar c) {
        return c.unicode() < 0x7F && (c.unicode() >= 0x20 || c == u'\r' || c == u'\n');
    });
}
} // namespace

// A piece of text with one format.
void RtfWriterTest::Writes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QTextCharFormat>("format");
    QTest::addColumn<QString>("body"); // behind the header and \pard, before \par
    const auto row = [](const char *name, const QString &text,
                        const std::function<void(QTextCharFormat &)> &change, const char *body) {
        QTextCharFormat format;
        change(format);
        QTest::newRow(name) << text << format << QString(body);
    };
    const auto none = [](QTextCharFormat &) {};
    row("text", "a", none, "a");
    row("nothing", "", none, "");
    row("signs", R"({a\b})", none, R"(\{a\\b\})");
    row("umlauts", "äÿ¡", none, R"(\'e4\'ff\'a1)");
    row("euro", "€", none, R"(\u8364?)");
    row("astral", "😀", none, R"(\u-10179?\u-8704?)");
    row("control characters", QString(QChar(0x81)) + QChar(1), none, R"(\u129?\u1?)");
    row("named", u"\t\u2028\u00A0\u00AD\u2011"_s, none, R"(\tab \line \~\-\_)");
    row(
        "bold", "a", [](QTextCharFormat &f) { f.setFontWeight(QFont::Bold); }, R"(\plain\b a)");
    row(
        "italic", "a", [](QTextCharFormat &f) { f.setFontItalic(true); }, R"(\plain\i a)");
    row(
        "underline", "a", [](QTextCharFormat &f) { f.setFontUnderline(true); }, R"(\plain\ul a)");
    row(
        "strike", "a", [](QTextCharFormat &f) { f.setFontStrikeOut(true); }, R"(\plain\strike a)");
    row(
        "size", "a", [](QTextCharFormat &f) { f.setFontPointSize(8.25); }, R"(\plain\fs17 a)");
    row(
        "size in pixels", "a", [](QTextCharFormat &f) { f.setProperty(QTextFormat::FontPixelSize, 16); },
        R"(\plain\fs24 a)");
    row(
        "raised", "a", [](QTextCharFormat &f) { SetCharOffset(f, 50); }, R"(\plain\up5 a)");
    row(
        "lowered", "a", [](QTextCharFormat &f) { SetCharOffset(f, -20); }, R"(\plain\dn2 a)");
    row(
        "on the line again", "a", [](QTextCharFormat &f) { SetCharOffset(f, 0); }, "a");
    row(
        "super", "a", [](QTextCharFormat &f) { f.setVerticalAlignment(QTextCharFormat::AlignSuperScript); },
        R"(\plain\super a)");
    row(
        "sub", "a", [](QTextCharFormat &f) { f.setVerticalAlignment(QTextCharFormat::AlignSubScript); },
        R"(\plain\sub a)");
    row(
        "spelling mistake", "a",
        [](QTextCharFormat &f) { f.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline); }, "a");
    row(
        "ground", "a", [](QTextCharFormat &f) { f.setBackground(Qt::yellow); }, "a");
}

void RtfWriterTest::Writes()
{
    QFETCH(QString, text);
    QFETCH(QTextCharFormat, format);
    QFETCH(QString, body);
    QTextDocument document;
    SetRichText(document, {}); // as boxes are made ready
    QTextCursor(&document).insertText(text, format);
    QCOMPARE(ToRtf(document), "{\\rtf1\\ansi\\ansicpg1252\\uc1\\pard " + body + "\\par\r\n}\r\n");
}

namespace {
// Documents as boxes can hold them, from a fixed seed.
class RandomDocuments
{
public:
    explicit RandomDocuments(quint32 seed) : random_(seed) {}

    void Fill(QTextDocument &document)
    {
        document.clear();
        QTextCursor cursor(&document);
        const int paragraphs = Below(6);
        for (int i = 0; i <= paragraphs; ++i) {
            if (i > 0)
                cursor.insertBlock();
            cursor.setBlockFormat(BlockFormat());
            cursor.setBlockCharFormat(CharFormat());
            for (int runs = Below(6); runs > 0; --runs)
                cursor.insertText(Text(), CharFormat());
            cursor.setBlockFormat(WithShownTabs(cursor.block()));
        }
    }

private:
    int Below(int limit) { return random_.bounded(limit); }

    bool Often() { return Below(3) == 0; }

    QTextCharFormat CharFormat()
    {
        QTextCharFormat format;
        static const QStringList families{"Arial", "Small Fonts", "Größe 7", "明朝", "a{b}\\c"};
        if (Often())
            format.setFontFamilies({families[Below(int(families.size()))]});
        if (Often())
            format.setFontPointSize((1 + Below(200)) / 2.0);
        if (Often())
            format.setFontWeight(Often() ? QFont::Bold : QFont::Normal);
        if (Often())
            format.setFontItalic(Often());
        if (Often())
            format.setUnderlineStyle(static_cast<QTextCharFormat::UnderlineStyle>(Below(7)));
        if (Often())
            format.setFontStrikeOut(Often());
        if (Often())
            SetTextColour(format, QColor(Below(256), Below(256), Below(256)));
        if (Often())
            SetCharOffset(format, 10 * (Below(200) - 100));
        else if (Often())
            format.setVerticalAlignment(Often() ? QTextCharFormat::AlignSuperScript
                                                : QTextCharFormat::AlignSubScript);
        return format;
    }

    QTextBlockFormat BlockFormat()
    {
        QTextBlockFormat format;
        static constexpr std::array Alignments{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter,
                                               Qt::AlignJustify};
        if (Often())
            format.setAlignment(Alignments.at(std::size_t(Below(4))));
        const auto pixels = [this](int least, int most) { return (least + Below(most - least)) / 15.0; };
        if (Often())
            format.setLeftMargin(pixels(0, 5'000));
        if (Often())
            format.setRightMargin(pixels(0, 5'000));
        if (Often())
            format.setTextIndent(pixels(-3'000, 3'000));
        if (Often())
            format.setTopMargin(pixels(0, 1'000));
        if (Often())
            format.setBottomMargin(pixels(0, 1'000));
        QList<QTextOption::Tab> tabs;
        for (int count = Often() ? Below(5) : 0; count > 0; --count)
            tabs << QTextOption::Tab(pixels(1, 9'000), static_cast<QTextOption::TabType>(Below(4)), u',');
        if (!tabs.isEmpty())
            format.setTabPositions(tabs);
        return format;
    }

    // Boxes have those that RTF takes for granted too, all in order.
    static QTextBlockFormat WithShownTabs(const QTextBlock &block)
    {
        QTextBlockFormat format = block.blockFormat();
        RtfParagraphState paragraph;
        paragraph.left = int(std::lround(format.leftMargin() * TwipsPerPixel));
        paragraph.first = int(std::lround(format.textIndent() * TwipsPerPixel));
        paragraph.tabs = format.tabPositions();
        const auto width = int(block.document()->defaultTextOption().tabStopDistance()) * TwipsPerPixel;
        format.setTabPositions(ShownTabs(paragraph, width, block.text().contains('\t')));
        return format;
    }

    QString Text()
    {
        QString text;
        for (int count = 1 + Below(12); count > 0; --count) {
            switch (Below(5)) {
            case 0:
                text += u"\\{}\t\u2028\u00A0\u00AD\u2011?;'*-0 "_s[Below(14)];
                break;
            case 1:
                text += QChar(0xA1 + Below(0x500));
                break;
            case 2:
                text += QChar::fromUcs4(char32_t(0x10000 + Below(0x100000)));
                break;
            default:
                text += QChar('a' + Below(26));
            }
        }
        return text;
    }

    QRandomGenerator random_;
};
} // namespace

void RtfWriterTest::RandomDocumentsComeBackEqual()
{
    RandomDocuments documents(4711);
    for (int i = 0; i < 2'000; ++i) {
        QTextDocument written;
        documents.Fill(written);
        const QString rtf = ToRtf(written);
        QVERIFY(IsSevenBit(rtf));
        QTextDocument read;
        QVERIFY(SetRichText(read, rtf));
        QCOMPARE(Describe(read), Describe(written));
        QCOMPARE(PlainText(read), PlainText(written));
        QCOMPARE(ToRtf(read), rtf);

        const QByteArray bytes = rtf.toLatin1();
        QVERIFY(SetRichTextBytes(read, bytes));
        QCOMPARE(Describe(read), Describe(written));
    }
}

void RtfWriterTest::EveryCharacterComesBack()
{
    QString text(QChar::ByteOrderMark); // at the start it is a character like others
    QTextDocument plain;
    SetRichText(plain, text + "a");
    QCOMPARE(PlainText(plain), text + "a");
    for (char32_t c = 1; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 251) {
        const bool own = c == '\n' || c == '\v' || c == '\f' || c == '\r' || c == 0x2029 || c == 0xFFFC ||
                         c == 0xFDD0 || c == 0xFDD1 || QChar::isSurrogate(c);
        if (!own)
            text += QChar::fromUcs4(c);
    }
    QTextDocument written;
    QTextCursor(&written).insertText(text);
    QTextDocument read;
    QVERIFY(SetRichText(read, ToRtf(written)));
    QCOMPARE(read.toRawText(), written.toRawText());
}

// Other programs show them in their font, and read \\'61 as alpha there only.
void RtfWriterTest::SymbolsKeepTheirFontAndCharacterSet()
{
    const QString head =
        R"({\rtf1\ansi\ansicpg1252\uc1{\fonttbl{\f0\fnil\fcharset2 Symbol;}{\f1\fnil\fcharset2 )"
        R"(Wingdings;}{\f2\fnil\fcharset2 Eigene Zeichen;})";
    const QString body =
        "\\pard \\plain\\f0 \\'61\\'b7\\tab \\'5c\\plain\\f1 \\'4a\\'21\\'ff\\plain\\f2 \\'50\\'e4"
        "\\plain  a\\par\r\n}\r\n";
    QTextDocument document;
    QVERIFY(SetRichText(document, head + "}\r\n" + body));
    QCOMPARE(PlainText(document), u"α•\t∴☺\U0001F589\uF0FF\uF050\uF0E4 a"_s);
    QCOMPARE(ToRtf(document), head + "}\r\n" + body);
    // The same through the clipboard.
    QCOMPARE(FragmentToRtf(QTextDocumentFragment(&document)),
             (head + "}\r\n" + QString(body).replace("\\par\r\n}", "}")).toLatin1());

    // What is typed between them is no symbol.
    QTextCursor cursor(&document);
    cursor.setPosition(1);
    cursor.insertText("aß");
    QTextDocument again;
    SetRichText(again, ToRtf(document));
    QCOMPARE(PlainText(again), PlainText(document));
    QCOMPARE(Describe(again).section("[", 0, 3), u"[Symbol]α[]aß[Symbol]•\t∴"_s);

    // And what gets another font is a usual character in it.
    cursor.select(QTextCursor::Document);
    QTextCharFormat arial;
    arial.setFontFamilies({"Arial"});
    cursor.mergeCharFormat(arial);
    QVERIFY(ToRtf(document).contains("\\fcharset0 Arial;}}\r\n"));
    SetRichText(again, ToRtf(document));
    QCOMPARE(Describe(again), "[Arial]" + PlainText(document));
}

// Showing a card and storing it again, as often as one likes.
void RtfWriterTest::StoringATextAgainChangesNothing()
{
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1\ansi\deff0{\fonttbl{\f0 Arial;}}\fs17 H\fs14\b\dn2 2\par\par})"));
    const QString text = PlainText(document);
    const QString rtf = ToRtf(document);
    for (int i = 0; i < 100; ++i) {
        SetRichText(document, ToRtf(document));
        QCOMPARE(ToRtf(document), rtf);
        QCOMPARE(PlainText(document), text);
    }
    QCOMPARE(text, QString("H2\r\n"));
}

void RtfWriterTest::UnsetFormatsTakeTheDefaultFont()
{
    QTextDocument document;
    QFont font("Arial", 12);
    font.setItalic(true);
    document.setDefaultFont(font);
    QTextCursor cursor(&document);
    cursor.insertText("a", QTextCharFormat());
    QTextCharFormat own;
    own.setFontPointSize(7);
    own.setFontItalic(false);
    cursor.insertText("b", own);
    QTextDocument read;
    SetRichText(read, ToRtf(document));
    QCOMPARE(Describe(read), QString("[Arial 12pt i]a[Arial 7pt]b"));
}

void RtfWriterTest::WhatRtfCannotHoldIsDropped()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText("a");
    cursor.insertImage("http://example.invalid/x.png");
    cursor.insertText("b");
    QTextTable *table = cursor.insertTable(1, 2);
    table->cellAt(0, 0).firstCursorPosition().insertText("c");
    table->cellAt(0, 1).firstCursorPosition().insertText("d");
    cursor.movePosition(QTextCursor::End);
    cursor.insertList(QTextListFormat::ListDisc);
    cursor.insertText("e");
    QTextDocument read;
    SetRichText(read, ToRtf(document));
    QCOMPARE(Describe(read), QString("ab\nc\nd\n\ne"));
    QVERIFY(!ToRtf(document).contains("example"));
}

void RtfWriterTest::FragmentsKeepTheirFormat()
{
    RandomDocuments documents(815);
    for (int i = 0; i < 200; ++i) {
        QTextDocument source;
        SetRichText(source, {}); // as boxes are made ready
        documents.Fill(source);
        const QByteArray rtf = FragmentToRtf(QTextDocumentFragment(&source));
        QTextDocument target;
        QVERIFY(InsertRichText(QTextCursor(&target), *DocumentFromRtf(rtf)));
        QTextDocument direct;
        QTextCursor(&direct).insertFragment(QTextDocumentFragment(&source));
        QCOMPARE(Describe(target), Describe(direct));
        QCOMPARE(PlainText(target), PlainText(source));
    }
}

void RtfWriterTest::FragmentOfOneLineDoesNotBreakTheLine()
{
    QTextDocument source;
    SetRichText(source, QString(R"({\rtf1 one \b two\b0  three\par four\par})"));
    QTextCursor selection(&source);
    selection.setPosition(4);
    selection.setPosition(7, QTextCursor::KeepAnchor);
    const QByteArray inLine = FragmentToRtf(selection.selection());
    QVERIFY(!inLine.contains("\\par\r\n"));

    QTextDocument target;
    QTextCursor(&target).insertText("()");
    QTextCursor place(&target);
    place.setPosition(1);
    QVERIFY(InsertRichText(place, *DocumentFromRtf(inLine)));
    QCOMPARE(Describe(target), QString("([b]two[])"));

    selection.setPosition(8);
    selection.setPosition(14, QTextCursor::KeepAnchor); // "three" and the end of its line
    QTextDocument lines;
    QVERIFY(InsertRichText(QTextCursor(&lines), *DocumentFromRtf(FragmentToRtf(selection.selection()))));
    QCOMPARE(PlainText(lines), QString("three\r\n"));
}

void RtfWriterTest::ColourBlackIsAutomatic()
{
    QTextCharFormat format;
    QVERIFY(!TextColour(format).isValid());
    SetTextColour(format, Qt::red);
    QCOMPARE(TextColour(format), QColor(Qt::red));
    SetTextColour(format, Qt::black);
    QVERIFY(!TextColour(format).isValid());
    format.setForeground(Qt::black);
    QVERIFY(!TextColour(format).isValid());

    // Merging "automatic" takes a colour away.
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1{\colortbl;\red255\green0\blue0;}\cf1 a})"));
    QTextCharFormat automatic;
    SetTextColour(automatic, QColor());
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.mergeCharFormat(automatic);
    QCOMPARE(Describe(document), QString("a"));
}

void RtfWriterTest::OffsetsEndSuperscript()
{
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1 a{\super b}{\up5 c}})"));
    QTextCharFormat onLine;
    SetCharOffset(onLine, 0);
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.mergeCharFormat(onLine);
    QCOMPARE(Describe(document), QString("abc"));
    for (auto part = document.begin().begin(); !part.atEnd(); ++part)
        QCOMPARE(part.fragment().charFormat().baselineOffset(), 0.0);
}

// Where one is installed.
void RtfWriterTest::WordProcessorReadsTheText()
{
    const QString office = QStandardPaths::findExecutable("soffice");
    if (office.isEmpty())
        return;
    QTemporaryDir directory;
    const QString rtfFile = directory.filePath("card.rtf");
    QTextDocument document;
    SetRichText(
        document,
        QString(R"({\rtf1\ansi\fs24\b Stra\'dfe\b0  \u8364? \u-10179?\u-8704?\par\qc H\dn4 2\dn0 O\par})"));
    QFile file(rtfFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(ToRtf(document).toLatin1());
    file.close();
    for (const char *target : {"txt:Text (encoded):UTF8", "pdf"}) {
        QProcess process;
        process.start(office, {"-env:UserInstallation=file://" + directory.path() + "/profile", "--headless",
                               "--convert-to", target, "--outdir", directory.path(), rtfFile});
        QVERIFY(process.waitForFinished(120'000));
        QCOMPARE(process.exitCode(), 0);
    }
    QFile text(directory.filePath("card.txt"));
    QVERIFY(text.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(text.readAll()).remove(QChar::ByteOrderMark).remove(u'\r').trimmed(),
             u"Straße € 😀\nH2O"_s);
    QFile pdf(directory.filePath("card.pdf"));
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    QVERIFY(pdf.readAll().startsWith("%PDF"));
}

PAUKFIX_TEST(RtfWriterTest)
#include "RtfWriterTest.moc"
