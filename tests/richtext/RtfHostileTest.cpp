// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Describe.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QAbstractTextDocumentLayout>
#include <QRandomGenerator>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Texts that are made to hurt. Each must be read, laid out and written again; none may take the test's time.
class RtfHostileTest : public QObject
{
    Q_OBJECT

private slots:
    void EndsInAShownText_data();
    void EndsInAShownText();
    void TooMuchTextEndsInALineThatSaysSo();
    void WhatFitsIsWhole();
    void FormatsAreBounded();
    void LongWordsWrapAnywhereUntilTheNextText();
    void DeepGroupsKeepTheFormatOfTheOuterOnes();
    void DamagedTextsAreReadAndWrittenAlike();
};

namespace {
const qsizetype Many = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 50'000 : 1'000'000;

QString Rtf(const QString &content)
{
    return "{\\rtf1\\ansi " + content + "}";
}

QString Repeated(const char *piece, qsizetype times = Many)
{
    return QString::fromLatin1(piece).repeated(times);
}

QString ManyFontsAndSymbols()
{
    QString fonts = "{\\fonttbl";
    for (int i = 0; i < Many / 5; ++i)
        fonts += QString("{\\f%1\\fcharset2 S%1;}").arg(i);
    return Rtf(fonts + "}" + Repeated("{\\field{\\*\\fldinst SYMBOL 74 \\\\f None}}", Many / 20) + "x");
}

QString ThousandsOfFormats()
{
    QString fonts = "{\\fonttbl";
    QString text;
    for (int i = 0; i < 5'000; ++i) {
        fonts += QString("{\\f%1 F%1;}").arg(i);
        text += QString("\\f%1\\fs%2\\li%1 a\\par").arg(i).arg(8 + i % 40);
    }
    return Rtf(fonts + "}" + text + "\\plain x");
}

void LayOut(QTextDocument &document)
{
    document.setTextWidth(400);
    QVERIFY(document.documentLayout()->documentSize().height() > 0);
}
} // namespace

void RtfHostileTest::EndsInAShownText_data()
{
    QTest::addColumn<QString>("rtf");
    QTest::addColumn<QString>("end"); // of the plain text

    // A million of each; fewer in the short form.
    QTest::newRow("a million open braces") << Rtf(Repeated("{") + "x") << "x";
    QTest::newRow("a million groups in each other") << Rtf(Repeated("{") + "x" + Repeated("}") + "y") << "xy";
    QTest::newRow("a million closing braces") << Rtf("x" + Repeated("}")) << "x";
    QTest::newRow("a million formats in each other") << Rtf(Repeated("{\\b{\\i{\\fs30") + "x") << "x";
    QTest::newRow("a million skipped groups in each other") << Rtf("x" + Repeated("{\\*\\a")) << "x";
    QTest::newRow("a million skipped groups") << Rtf(Repeated("{\\*\\a b}") + "x") << "x";
    QTest::newRow("a million braces in the font table")
        << Rtf("{\\fonttbl" + Repeated("{") + Repeated("}") + "}x") << "x";
    QTest::newRow("a million fonts") << Rtf("{\\fonttbl" + Repeated("{\\f7 a;}") + "}x") << "x";
    QTest::newRow("a million colours") << Rtf("{\\colortbl" + Repeated(";") + "}\\cf999999 x") << "x";
    QTest::newRow("a million tab stops") << Rtf(Repeated("\\tx9") + " x") << "x";
    QTest::newRow("a million backslashes") << Rtf(Repeated("\\\\", Many / 10) + "x") << "x";
    QTest::newRow("a long font name") << Rtf("{\\fonttbl{\\f0 " + Repeated("n") + ";}}\\f0 x") << "x";
    QTest::newRow("a long control word") << Rtf("\\" + Repeated("a") + " x") << "x";
    QTest::newRow("a long number") << Rtf("\\fs" + Repeated("9") + " x") << "x";
    QTest::newRow("a long number of replacements")
        << Rtf("\\uc2147483647\\u65?" + Repeated("?") + "{}x") << "x";
    QTest::newRow("binary to the end") << Rtf("x\\bin2147483647" + Repeated("y")) << "x";
    QTest::newRow("code pages") << Rtf(Repeated("\\ansicpg1\\'e4\\ansicpg2\\'e4 ", Many / 100) + "x") << "x";
    QTest::newRow("one word of two formats") << Rtf(Repeated("\\b a\\b0 b", Many / 20) + "x") << "x";
    QTest::newRow("one word") << Rtf(Repeated("a", Many * 3 / 10) + "x") << "x";
    QTest::newRow("one word of big letters") << Rtf("\\fs400 " + Repeated("a", Many / 200) + "x") << "x";
    QTest::newRow("empty paragraphs") << Rtf(Repeated("\\par", Many * 3 / 100) + " x") << "x";
    QTest::newRow("NUL characters") << Rtf(QString(Many, QChar(0)) + "x") << "x";
    QTest::newRow("not even RTF") << QString(Many, u'{') + "x"
                                  << "x";

    QTest::newRow("many symbol fonts and fields") << ManyFontsAndSymbols() << "x";
    QTest::newRow("thousands of fonts and sizes") << ThousandsOfFormats() << "x";
}

void RtfHostileTest::EndsInAShownText()
{
    QFETCH(QString, rtf);
    QFETCH(QString, end);
    QTextDocument document;
    SetRichText(document, rtf);
    const QString text = PlainText(document);
    QVERIFY2(text.endsWith(end) || text.endsWith(u"[…]"_s), qPrintable(text.right(50)));
    LayOut(document);
    QTextDocument again;
    SetRichText(again, ToRtf(document));
    QCOMPARE(PlainText(again).size(), text.size());
}

void RtfHostileTest::TooMuchTextEndsInALineThatSaysSo()
{
    const QStringList texts{
        Rtf(Repeated("hello world ", 1'000'000)),
        Rtf(Repeated("\\par ", 1'000'000)),
        Rtf(Repeated("\\line ", 1'000'000)),
        Rtf(Repeated("\\tab ", 1'000'000)),
        Rtf("\\fs3276 " + Repeated("\\line ", 5'000)),
        Rtf("\\fs3276 " + Repeated("a ", 5'000)),
        Rtf("\\sb31680\\sa31680 " + Repeated("\\par ", 5'000)),
        Rtf(Repeated("\\b a\\b0  b ", 50'000)),
        Repeated("hello world ", 1'000'000),
        Repeated("\r\n", 1'000'000),
    };
    for (const QString &text : texts) {
        QTextDocument document;
        QVERIFY(!SetRichText(document, text));
        QVERIFY(PlainText(document).endsWith(u"\r\n[…]"_s));
        LayOut(document);
    }
}

void RtfHostileTest::WhatFitsIsWhole()
{
    QTextDocument document;
    const QString line = "Das ist eine Zeile einer sehr langen Karte.";
    QString rtf;
    for (int i = 0; i < 20'000; ++i)
        rtf += line + "\\par\r\n";
    QVERIFY(SetRichText(document, Rtf(rtf)));
    QCOMPARE(document.blockCount(), 20'000);
    QCOMPARE(PlainText(document).size(), 20'000 * (line.size() + 2) - 2);

    // Indents that leave no room would give each character a line of its own; then the text goes before.
    QVERIFY(SetRichText(document, Rtf("\\li30000 " + Repeated("ab ", 100'000) + "\\par\\li720 x")));
    QCOMPARE(document.begin().blockFormat().leftMargin(), 0.0);
    QCOMPARE(document.lastBlock().blockFormat().leftMargin(), 48.0);
    LayOut(document);
}

void RtfHostileTest::FormatsAreBounded()
{
    QTextDocument document;
    QVERIFY(SetRichText(document, ThousandsOfFormats()));
    QCOMPARE(document.blockCount(), 5'001);
    // A thousand of characters, a thousand of paragraphs, and those that every document has.
    QVERIFY(document.allFormats().size() < 2'010);
}

void RtfHostileTest::LongWordsWrapAnywhereUntilTheNextText()
{
    QTextDocument document;
    const auto mode = [&document] { return document.defaultTextOption().wrapMode(); };
    SetRichText(document, Rtf(Repeated("a", 1'000)));
    QCOMPARE(mode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    SetRichText(document, Rtf(Repeated("a\\b0 b\\b ", 501)));
    QCOMPARE(mode(), QTextOption::WrapAnywhere);
    SetRichText(document, QString("a"));
    QCOMPARE(mode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    SetRichText(document, Repeated("a", 1'001));
    QCOMPARE(mode(), QTextOption::WrapAnywhere);

    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    document.setDefaultTextOption(option);
    SetRichText(document, Repeated("a", 1'001));
    QCOMPARE(mode(), QTextOption::NoWrap);
}

void RtfHostileTest::DeepGroupsKeepTheFormatOfTheOuterOnes()
{
    QTextDocument document;
    SetRichText(document, Rtf("{\\b " + Repeated("{") + "\\i x" + Repeated("}") + "y}z"));
    QCOMPARE(Describe(document), QString("[b i]x[b]y[]z"));
}

// Whatever a reader makes of a damaged text, writing and reading that again must change nothing.
void RtfHostileTest::DamagedTextsAreReadAndWrittenAlike()
{
    const QByteArray sound =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}{\\f1\\fcharset128 Jp;}}"
        "{\\colortbl ;\\red255\\green0\\blue0;}{\\info{\\title "
        "x}}\\viewkind4\\uc1\\pard\\qc\\li720\\fi-360\\tx900\\tqr"
        "\\tx2000\\f0\\fs24 H\\dn2\\b 2\\dn0\\b0 O {\\i kursiv\\'e4\\u8364?}\\par {\\f1 "
        "\\'83\\'41}\\tab{\\*\\x y}"
        "{\\pict\\bin4 }{}{}\\cf1\\ul rot\\ulnone\\line\\u-10179?\\u-8704?\\super 2\\par\\pard\\plain "
        "x\\par}";
    const QByteArray alphabet = "{}\\ '*;?0123456789abfirtuxy-\r\n\t\x81\xE4";
    QRandomGenerator random(20260101);
    const auto below = [&random](qsizetype limit) { return qsizetype(random.bounded(quint32(limit))); };
    for (int round = 0; round < 5'000; ++round) {
        QByteArray damaged = sound;
        for (qsizetype hits = 1 + below(8); hits > 0; --hits) {
            const qsizetype place = below(damaged.size());
            switch (below(4)) {
            case 0:
                damaged[place] = alphabet[below(alphabet.size())];
                break;
            case 1:
                damaged.remove(place, below(20));
                break;
            case 2:
                damaged.insert(place, sound.mid(below(sound.size()), below(40)));
                break;
            default:
                damaged.insert(place, alphabet[below(alphabet.size())]);
            }
            if (damaged.isEmpty())
                damaged = "{";
        }
        QTextDocument read;
        SetRichTextBytes(read, damaged);
        const QString rtf = ToRtf(read);
        QTextDocument again;
        SetRichText(again, rtf);
        QVERIFY2(Describe(again) == Describe(read), damaged.constData());
        QVERIFY2(PlainText(again) == PlainText(read), damaged.constData());
        QVERIFY2(ToRtf(again) == rtf, damaged.constData());
    }
}

PAUKFIX_TEST(RtfHostileTest)
#include "RtfHostileTest.moc"
