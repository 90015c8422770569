// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Describe.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTextLayout>

using namespace paukfix;
using namespace Qt::StringLiterals;

class RtfReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void Shows_data();
    void Shows();
    void ShowsBytes_data();
    void ShowsBytes();
    void WholeFilesOfOtherPrograms_data();
    void WholeFilesOfOtherPrograms();
    void PlainTextHasCrLfBetweenLines();
    void WhatIsRtf();
    void NewContentCannotBeUndone();
    void EmptyLinesKeepTheirFormat();
    void PlainRtfIsNotBoldInABoldBox();
    void SymbolsLeaveInk();
    void RaisedTextIsPaintedHigher();
    void ATabReachesTheColumnOfAHangingIndent();
    void TabsReachWhereOtherProgramsPutThem();
    void AutomaticColourFollowsThePalette();
};

// The rows are the inside of "{\rtf1\ansi\deff0" with the tables of Fonts and Colours below.
void RtfReaderTest::Shows_data()
{
    QTest::addColumn<QString>("rtf");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *rtf, const QString &shown) {
        QTest::newRow(name) << QString::fromUtf8(rtf) << shown;
    };

    row("text", R"(abc)", "abc");
    row("nothing", R"()", "");
    row("line breaks of the file are none", "ab\r\nc\nd", "abcd");
    row("blank after a word is its end", R"(\b  x)", "[b] x");
    row("escaped braces and backslash", R"(\{a\\b\})", R"({a\b})");
    row("raw characters beyond ASCII", "ä€😀", u"ä€😀"_s);
    row("raw tab", "a\tb", "a\tb");

    row("last par is no line", R"(a\par)", "a");
    row("last par of boxes", "a\r\n\\par }", "a");
    row("two pars are one line", R"(a\par\par)", "a\n");
    row("par between lines", R"(a\par b)", "a\nb");
    row("only par", R"(\par)", "");
    row("two pars alone", R"(\par\par)", "\n");
    row("par in a group", R"({a\par}b)", "a\nb");
    row("format words after the last par", R"(a\par\pard\plain\f0\fs20)", "a");
    row("backslash before a line break is par", "a\\\r\nb\\\nc", "a\nb\nc");
    row("line", R"(a\line b)", "a/b");
    row("line at the end", R"(a\line)", "a/");
    row("page", R"(a\page b)", "a\nb");
    row("section", R"(a\sect b)", "a\nb");
    row("what follows the last brace", R"(a}b{c)", "a");

    row("tab", R"(a\tab b)", "a\tb");
    row("dashes", R"(a\emdash b\endash c)", u"a—b–c"_s);
    row("quotes", R"(\lquote a\rquote\ldblquote b\rdblquote)", u"‘a’“b”"_s);
    row("bullet", R"(\bullet  a)", u"• a"_s);
    row("spaces", R"(\~\emspace\enspace\qmspace)", u"\u00A0\u2003\u2002\u2005"_s);
    row("hyphens", R"(a\-b\_c)", u"a\u00ADb\u2011c"_s);
    row("joiners", R"(\zwj\zwnj\ltrmark\rtlmark\zwbo\zwnbo)", u"\u200D\u200C\u200E\u200F\u200B\u2060"_s);
    row("table cells", R"(a\cell b\cell\row c)", "a\tb\t\nc");

    row("hex", R"(\'e4\'F6\'dF)", u"äöß"_s);
    row("hex in Windows-1252", R"(\'80\'84\'93)", u"€„“"_s);
    row("open places of Windows-1252", R"(\'81\'8d\'8f\'90\'9d)", u"\u0081\u008D\u008F\u0090\u009D"_s);
    row("open place of another page", R"(\ansicpg1253 \'d2)", u"Ò"_s);
    row("hex without digits", R"(a\'zzb\')", "azzb");
    row("hex with one digit", R"(a\'4)", "a4");
    row("code page of the document", R"(\ansicpg1251 \'e4)", u"д"_s);
    row("unknown code page", R"(\ansicpg4711 \'e4)", u"ä"_s);
    row("Mac", R"(\mac \'8a)", u"ä"_s);
    row("DOS", R"(\pc \'84\pca \'84)", u"ää"_s);
    row("code page of the font", R"({\f2 \'e4}\'e4)", u"[Cyr]д[]ä"_s);
    row("font without character set has the document's", R"(\ansicpg1251 {\f5 \'e4})", u"[None]д"_s);
    row("cpg of a font", R"({\f6 \'e4})", u"[Page]δ"_s);
    row("symbol bullet", R"({\f4 \'b7})", u"[Symbol]•"_s);
    row("Greek letters of the symbol font", R"({\f4 abc\'44\\\{\}\u-3999?\u61537?}a)",
        u"[Symbol]αβχΔ∴{}αα[]a"_s);
    row("places of the symbol font by their number", R"({\f4 \u183\'b7\u-3913\'b7})", u"[Symbol]••"_s);
    row("places without a character", R"({\f4 \'f0})", u"[Symbol]\uF0F0"_s);
    row("what is no place", R"({\f4 a\u257?\emdash\u8364?b\tab\~\line})",
        u"[Symbol]α[]ā—€[Symbol]β\t\u00A0/"_s);
    row("Wingdings", R"({\f8 JKL\'fc\'e0\u-3854?\'20\'ff})", u"[Wingdings]☺😐☹✔🡪⇩ \uF0FF"_s);
    row("Wingdings by its name alone", R"({\f9 J})", u"[wingdings]☺"_s);
    row("a letter font of that name", R"({\f10 J})", "[Symbol]J");
    row("a symbol font that nobody knows", R"({\f11 J\'e4\u-3999?})", u"[Eigene]\uF04A\uF0E4\uF061"_s);

    row("symbol field", R"(a{\field{\*\fldinst SYMBOL 183 \\f "Symbol" \\s 12}{\fldrslt\f1\fs20}}b)",
        u"a[Symbol 12pt]•[]b"_s);
    row("symbol field in groups",
        R"({\field{\*\fldinst {\b SYMBOL 0xF04A \\f Wingdings\\h }}{\fldrslt {x}}}b)",
        u"[Wingdings b]☺[]b"_s);
    row("symbol field in the text's font",
        R"({\field{\*\fldinst SYMBOL 163}{\fldrslt }}{\f4\field{\*\fldinst symbol 97}})", u"£[Symbol]α"_s);
    row("symbol field with a character", R"({\field{\*\fldinst SYMBOL 8734 \\u \\f "Arial"}{\fldrslt ?}})",
        u"[Arial]∞"_s);
    row("symbol field that is none",
        R"({\field{\*\fldinst SYMBOL x}{\fldrslt r}}{\field{\*\fldinst SYMBOL 7}{\fldrslt s}})", "rs");
    row("symbol field within a field",
        R"({\field{\*\fldinst HYPERLINK "x"}{\fldrslt a{\field{\*\fldinst SYMBOL 74 \\f "Wingdings"}{\fldrslt q}}b}}c)",
        u"a[Wingdings]☺[]bc"_s);
    row("hidden symbol field", R"({\v{\field{\*\fldinst SYMBOL 183}{\fldrslt }}}b)", "b");

    row("Japanese with a backslash as second byte", R"({\f3 \'83\\\'83\'41\'83\{x\\y})", u"[Jp]ソアボx\\y"_s);
    row("letters of one byte", R"({\f3 \'b1\\\'b1\{})", u"[Jp]ｱ\\ｱ{"_s);
    row("font of double-byte text", R"(\loch\af1\hich\af1\dbch\f3 \'83\'41\loch\f1 a)", u"[Jp]ア[Arial]a"_s);
    row("associated font of double-byte text",
        R"({\f1\hich\af2\dbch\af3\loch\f1 a\dbch \'83\'41\hich \'e4}\'e4)", u"[Arial]a[Jp]ア[Cyr]д[]ä"_s);
    row("associated font of text from right to left", R"(\f1\rtlch\fcs1 \af2 \ltrch\fcs0 \'e4)",
        u"[Arial]ä"_s);
    row("plain ends the kinds", R"(\dbch\af3 \plain \'e4)", u"ä"_s);

    row("table within a table",
        R"(\intbl\itap2 a\nestcell{\nonesttables\par}b\nestcell{\*\nesttableprops\trowd\cellx1{\b x}\par\nestrow}{\nonesttables\par}c\nestcell{\*\nesttableprops\nestrow}\pard\intbl d\cell\row e)",
        "a\tb\t\nc\t\nd\t\ne");

    row("Japanese", R"({\f3 \'83\'41\'83C})", u"[Jp]アイ"_s);
    row("Japanese cut off", R"({\f3 \'83}x)", "x");
    row("Japanese and ASCII", R"({\f3 a\'83\'41b\par c})", u"[Jp]aアb\n[Jp]c"_s);
    row("Chinese and Korean", R"({\ansicpg936 \'c4\'e3}{\ansicpg949 \'b0\'a1}{\ansicpg950 \'a7\'41})",
        u"你가你"_s);
    row("UTF-8", R"(\ansicpg65001 \'c3\'a4)", u"ä"_s);

    row("unicode", R"(\u228?)", u"ä"_s);
    row("unicode with hex for others", R"(\u8364\'80x)", u"€x"_s);
    row("unicode with a blank after it", R"(\u228 ?x)", u"äx"_s);
    row("unicode, negative", R"(\u-3913?)", QString(QChar(0xF0B7)));
    row("unicode, surrogate pair", R"(\u-10179?\u-8704?)", u"😀"_s);
    row("unicode, whole astral number", R"(\u128512?)", u"😀"_s);
    row("unicode, half a pair", R"(a\u-10179?b\u-8704?)", u"a\uFFFDb\uFFFD"_s);
    row("unicode, halves in two formats", R"(\u-10179?\b\u-8704?)", u"\uFFFD[b]\uFFFD"_s);
    row("unicode, beyond all planes", R"(a\u9999999?b)", "ab");
    row("unicode, nothing for others", R"(\uc0\u228 x)", u"äx"_s);
    row("unicode, two for others", R"(\uc2\u228 xyz)", u"äz"_s);
    row("unicode, two bytes for others", R"(\uc2\u12450\'83\'41z)", u"アz"_s);
    row("uc belongs to the group", R"({\uc0\u228 x}\u228 xy)", u"äxäy"_s);
    row("replacement ends at a brace", R"({\u228}x\uc3\u246{y}z)", u"äxöyz"_s);
    row("replacement is an escape", R"(\u228\{x\u228\~x)", u"äxäx"_s);
    row("replacement is a named character", R"(\u8212\emdash x)", u"—x"_s);
    row("replacement is missing", R"(\u228\b x)", u"ä[b]x"_s);
    row("replacement is binary", R"(\u228\bin3 {}{x)", u"äx"_s);
    row("unicode line and paragraph", R"(a\u8232?b\u8233?c)", "a/b\nc");
    row("unicode line feed is a line", R"(a\u10?b)", "a/b");
    row("reserved characters", R"(a\u0?\u-560?\u-559?\u-4?b)", "ab"); // 0, FDD0, FDD1, FFFC

    row("bold, italic, strike", R"(\b a\b0\i b\i0\strike c\strike0 d\striked1 e)", "[b]a[i]b[s]c[]d[s]e");
    row("bold with a number", R"(\b1 a\b0 b)", "[b]a[]b");
    row("underlines",
        R"(\ul a\uld b\uldash c\uldashd d\uldashdd e\ulwave f\ulnone g\uldb h\ul0 i\ulth j\ulw k)",
        "[u]a[dot]b[dash]c[dashdot]d[dashdotdot]e[wave]f[]g[u]h[]i[u]jk");
    row("size", R"(\fs24 a\fs17 b\fs0 c\fs-5 d)", "[12pt]a[8.5pt]b[]cd");
    row("size beyond measure", R"(\fs999999999999 a)", "[1638pt]a");
    row("fonts", R"(\f1 a\f0 b\f99 c)", "[Arial]a[]bc");
    row("font name in pieces", R"(\f7 a)", u"[Größe 7]a"_s);
    row("colours", R"(\cf1 a\cf2 b\cf0 c)", "[#ff0000]a[#000080]b[]c");
    row("black is automatic", R"(\cf3 a\cf4 b)", "ab");
    row("unknown colours are automatic", R"(\cf99 a\cf-1 b)", "ab");
    row("grounds are dropped", R"(\cb1\highlight2\chcbpat1 a)", "a");
    row("raised and lowered", R"(\up5 a\dn2 b\up0 c\up d\dn e\dn0 f)", "[up50]a[dn20]b[]c[up60]d[dn60]e[]f");
    row("super and sub", R"(\super a\sub b\nosupersub c\up4\super d\dn3 e)",
        "[super]a[sub]b[]c[super]d[dn30]e");
    row("plain", R"(\f1\fs24\b\i\ul\strike\cf1\up5\v x\plain y)", "y");
    row("group restores", R"(\b a{\i b{\ul c}d}e)", "[b]a[b i]b[b i u]c[b i]d[b]e");
    row("hidden", R"(a{\v b\par}c)", "ac");
    row("words in capitals are others", R"(\B\Par a)", "a");

    row("alignment", R"(\qc a\par\qr b\par\qj c\par\ql d)", "(center)a\n(right)b\n(justify)c\nd");
    row("paragraph goes on with its format", R"(\qc a\par b\pard\par c)", "(center)a\nb\nc");
    row("format of the paragraph's end counts", R"(a\qc\par b)", "(center)a\n(center)b");
    row("format of the last paragraph", R"(\qc a)", "(center)a");
    row("indents", R"(\li720\ri360\fi-360 a)", "(li720 ri360 fi-360 tab360)a");
    row("spaces between paragraphs", R"(\sb120\sa60 a)", "(sb120 sa60)a");
    row("indents beyond measure", R"(\li-100\ri9999999\fi-9999999 a)", "(ri31680 fi-31680 tab31680)a");
    row("tab stops", R"(\tx1000\tqr\tx2000\tqc\tx3000\tqdec\tx4000\tx5000 a)",
        "(tab1000 rtab2000 ctab3000 dtab4000 tab5000)a");
    row("tab stops beside indents", R"(\li720\fi-360\tx720\tx1440\tx100 a)",
        "(li720 fi-360 tab-260 tab360 tab1080)a");
    row("tab stops before indents", R"(\tx720\li720\fi-360 a)", "(li720 fi-360 tab360)a");
    row("tabs behind the last stop of an indented paragraph", R"(\deftab10000\li720\fi-360\tx5000 a\tab)",
        "(li720 fi-360 tab360 tab4640 tab9640 tab19640 tab29640)a\t");
    row("tab stops beyond measure", R"(\tx9999999\tx-9999999 a)", "(tab-31680 tab31680)a");
    row("pard drops tab stops", R"(\tx1000 a\par\pard b)", "(tab1000)a\nb");
    row("paragraph format in a group", R"({\qc a\par}b)", "(center)a\nb");

    row("starred destination", R"(a{\*\unknown b{c}d}e)", "ae");
    row("starred known word", R"(a{\*\b b}c)", "ac");
    row("star inside text", R"(a\* b{c\* d}e)", "a bc de");
    row("unknown word", R"(a\unknownword12 b)", "ab");
    row("unknown word in front of a group", R"({\unknown a}b)", "ab");
    row("unknown symbol", R"(a\|b\:c)", "abc");
    row("picture", R"(a{\pict\wmetafile8 0102ff}b)", "ab");
    row("binary", "a{\\pict\\bin5 }}}{{}b", "ab");
    row("binary outside of a group", R"(a\bin3 }}}b)", "ab");
    row("binary longer than the text", R"(a\bin99 b)", "a");
    row("binary of negative length", R"(a\bin-9 b)", "ab");
    row("information", R"({\info{\author x}{\title y}}a)", "a");
    row("style sheet", R"({\stylesheet{\s0 Normal;}{\s1\b heading;}}a)", "a");
    row("object", R"({\object\objemb{\*\objdata 01}{\result x}}a)", "a");
    row("header and footer", R"({\header x}{\footerl y}{\footnote z}a)", "a");
    row("field shows its result", R"({\field{\*\fldinst HYPERLINK "x"}{\fldrslt a}}b)", "ab");
    row("old list text is text", R"({\pntext\'b7\tab}{\*\pn\pnlvlblt}a)", u"·\ta"_s);
    row("destination in the document's group", R"(a\info b\pict c)", "abc");
    row("table in the document's group", R"(a\fonttbl b\colortbl c)", "abc");
    row("skipped destination keeps the state", R"({\b{\info\i}x})", "[b]x");

    row("truncated word", R"(a\b)", "a");
    row("truncated escape", R"(a\)", "a");
    row("truncated group", R"(a{\b b{\i c)", "a[b]b[b i]c");
    row("truncated destination", R"(a{\info b)", "a");
    row("truncated font table", R"(a{\fonttbl{\f0 b)", "a");
    row("number cut off", R"(a\fs- b)", "a- b");
}

void RtfReaderTest::Shows()
{
    QFETCH(QString, rtf);
    QFETCH(QString, shown);
    // The text between is what may be malformed: nothing closes the document behind it.
    const QString head =
        R"({\rtf1\ansi{\fonttbl{\f0\fnil ;}{\f1\fswiss\fcharset0 Arial;}{\f2\fcharset204 Cyr;})"
        R"({\f3\fcharset128 Jp;}{\f4\fcharset2 Symbol;}{\f5 None;}{\f6\cpg1253 Page;})"
        R"({\f8\fcharset2 Wingdings;}{\f9 wingdings;}{\f10\fcharset0 Symbol;}{\f11\fcharset2 Eigene;})"
        R"({\f7{\*\panose 02}Gr\'f6\u223?e 7{\*\falt Other};}})"
        R"({\colortbl;\red255\green0\blue0;\red0\green0\blue128;\red0\green0\blue0;;})";
    QTextDocument document;
    QVERIFY(SetRichText(document, head + "\r\n" + rtf));
    QCOMPARE(Describe(document), shown);
}

void RtfReaderTest::ShowsBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("raw bytes of the code page") << QByteArray("{\\rtf1\\ansicpg1251 \xE4}") << u"д"_s;
    QTest::newRow("raw bytes of the font")
        << QByteArray("{\\rtf1{\\fonttbl{\\f0\\fcharset128 J;}}\\f0 \x83\x41 a}") << u"[J]ア a"_s;
    QTest::newRow("raw bytes that no page has") << QByteArray("{\\rtf1 \x81\x80}") << u"\u0081€"_s;
    QTest::newRow("raw bytes for others") << QByteArray("{\\rtf1\\u1076\xE4x}") << u"дx"_s;
    QTest::newRow("plain UTF-8") << QByteArray("\xC3\xA4\r\nb") << u"ä\nb"_s;
    QTest::newRow("plain UTF-8 with its mark") << QByteArray("\xEF\xBB\xBF\xC3\xA4") << u"ä"_s;
    QTest::newRow("plain Windows-1252") << QByteArray("\x84\xE4\x93") << u"„ä“"_s;
    QTest::newRow("RTF behind a mark") << QByteArray("\xEF\xBB\xBF{\\rtf1 a}") << "a";
    QTest::newRow("nothing") << QByteArray() << "";
}

void RtfReaderTest::ShowsBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, shown);
    QTextDocument document;
    QVERIFY(SetRichTextBytes(document, bytes));
    QCOMPARE(Describe(document), shown);
}

// As such programs write them.
void RtfReaderTest::WholeFilesOfOtherPrograms_data()
{
    QTest::addColumn<QString>("rtf");
    QTest::addColumn<QString>("shown");
    QTest::newRow("rich-text box of the nineties")
        << QString("{\\rtf1\\ansi\\deff0\\deftab720{\\fonttbl{\\f0\\fnil MS Sans "
                   "Serif;}{\\f1\\fnil\\fcharset2 Symbol;}"
                   "{\\f2\\fswiss\\fprq2 System;}{\\f3\\fnil Arial;}{\\f4\\fnil Small Fonts;}}\r\n"
                   "{\\colortbl\\red0\\green0\\blue0;\\red255\\green0\\blue0;}\r\n"
                   "\\deflang1031\\pard\\plain\\f3\\fs20 H\\plain\\f4\\fs14\\b\\dn2 2\\plain\\f3\\fs20 O "
                   "hei\\'dft"
                   "\r\n\\par \\plain\\f3\\fs20\\cf1\\b Wasser\\plain\\f3\\fs20 \r\n\\par }\r\n")
        << QString("[Arial 10pt]H[Small Fonts 7pt b dn20]2[Arial 10pt]O heißt\n[Arial 10pt b #ff0000]Wasser");
    QTest::newRow("rich-text box of today")
        << QString(
               "{\\rtf1\\ansi\\ansicpg1252\\deff0\\nouicompat\\deflang1031{\\fonttbl{\\f0\\fnil\\fcharset0 "
               "Calibri;}}\r\n"
               "{\\colortbl ;\\red0\\green0\\blue255;}\r\n"
               "{\\*\\generator Riched20 10.0.19041}\\viewkind4\\uc1 \r\n"
               "\\pard\\sa200\\sl276\\slmult1\\cf1\\f0\\fs22\\lang7 Stra\\'dfe\\cf0\\par\r\n\\par\r\n}\r\n")
        << QString("(sa200)[Calibri 11pt #0000ff]Straße\n(sa200)[Calibri 11pt]");
    QTest::newRow("default font")
        << QString("{\\rtf1\\deff1{\\fonttbl{\\f0 A;}{\\f1\\fcharset204 B;}}\\'e4{\\f0 a}\\b\\plain b}")
        << u"[B]д[A]a[B]b"_s;
    QTest::newRow("word processor")
        << QString(
               "{\\rtf1\\adeflang1025\\ansi\\ansicpg1252\\uc1\\adeff0\\deff0\\stshfdbch0{\\fonttbl{"
               "\\f0\\fbidi "
               "\\froman\\fcharset0\\fprq2{\\*\\panose 02020603050405020304}Times New Roman;}}"
               "{\\colortbl;\\red0\\green0\\blue0;\\red192\\green0\\blue0;}{\\*\\defchp \\f0 "
               "}{\\stylesheet{\\ql "
               "\\li0\\ri0 \\snext0 Normal;}}{\\*\\rsidtbl \\rsid1}{\\info{\\author A}{\\creatim\\yr2020}}"
               "{\\*\\xmlnstbl }\\paperw11906\\margl1417\\sectd{\\*\\pnseclvl1\\pnucrm{\\pntxta "
               ".}}\\pard\\plain "
               "\\ltrpar\\qc \\li0\\ri0\\sa160\\itap0 \\rtlch\\fcs1 \\af0\\afs24 \\ltrch\\fcs0 "
               "\\fs24\\lang1031 "
               "{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\b\\cf2 Titel}{\\rtlch \\u8211\\'96 Text\\par }"
               "{\\*\\themedata 504b}{\\*\\latentstyles{\\lsdlockedexcept Normal;}}}")
        << QString("(center sa160)[Times New Roman 12pt b #c00000]Titel[Times New Roman 12pt]– Text");
}

void RtfReaderTest::WholeFilesOfOtherPrograms()
{
    QFETCH(QString, rtf);
    QFETCH(QString, shown);
    QTextDocument document;
    SetRichText(document, rtf);
    QCOMPARE(Describe(document), shown);
}

void RtfReaderTest::PlainTextHasCrLfBetweenLines()
{
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1 a\~b\par\line c\par\par})"));
    QCOMPARE(PlainText(document), u"a\u00A0b\r\n\r\nc\r\n"_s);

    // Not RTF: the text as it is, whatever ends its lines.
    SetRichText(document, u"a\u00A0\\par b\r\nc\nd\re\vf\fg\r\n"_s);
    QCOMPARE(PlainText(document), u"a\u00A0\\par b\r\nc\r\nd\r\ne\r\nf\r\ng\r\n"_s);

    SetRichText(document, QString());
    QCOMPARE(PlainText(document), QString());
}

void RtfReaderTest::WhatIsRtf()
{
    QVERIFY(IsRtf(u"{\\rtf1 a}"));
    QVERIFY(IsRtf(u"{\\rtf"));
    QVERIFY(IsRtf(u"\uFEFF \r\n{\\rtf1 a}"));
    QVERIFY(!IsRtf(u""));
    QVERIFY(!IsRtf(u"{\\rt"));
    QVERIFY(!IsRtf(u"a{\\rtf1 a}"));
    QVERIFY(!IsRtf(u"{\\RTF1 a}"));
}

void RtfReaderTest::NewContentCannotBeUndone()
{
    QTextDocument document;
    QTextCursor(&document).insertText("typed");
    QVERIFY(document.isUndoAvailable());
    SetRichText(document, QString(R"({\rtf1 read})"));
    QVERIFY(!document.isUndoAvailable());
    QVERIFY(document.isUndoRedoEnabled());
    QVERIFY(!document.isModified());
    QTextCursor(&document).insertText("more ");
    document.undo();
    QCOMPARE(document.toPlainText(), QString("read"));
}

void RtfReaderTest::EmptyLinesKeepTheirFormat()
{
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1\fs40\b\par\pard\qr\plain\fs20\i\par})"));
    QCOMPARE(Describe(document), QString("[20pt b]\n(right)[10pt i]"));
    QTextCursor cursor(&document);
    cursor.insertText("typed");
    QCOMPARE(Describe(document), QString("[20pt b]typed\n(right)[10pt i]"));
}

void RtfReaderTest::PlainRtfIsNotBoldInABoldBox()
{
    QFont font("Arial", 12, QFont::Bold);
    font.setUnderline(true);
    QTextDocument document;
    document.setDefaultFont(font);
    SetRichText(document, QString(R"({\rtf1 a})"));
    const QFont shown = document.begin().begin().fragment().charFormat().font().resolve(font);
    QVERIFY(!shown.bold());
    QVERIFY(!shown.underline());
    QCOMPARE(shown.pointSize(), 12);

    SetRichText(document, QString("a"));
    QVERIFY(document.begin().begin().fragment().charFormat().isEmpty());
}

namespace {
QImage Paint(QTextDocument &document, const QColor &textColour, const QColor &ground)
{
    QImage image(200, 60, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, textColour);
    document.documentLayout()->draw(&painter, context);
    return image;
}

int FirstRowWithInk(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != image.pixelColor(image.width() - 1, image.height() - 1))
                return y;
    }
    return -1;
}
} // namespace

// Whatever fonts there are here: some show nothing for their own characters.
void RtfReaderTest::SymbolsLeaveInk()
{
    QTextDocument document;
    SetRichText(document, QString(R"({\rtf1{\fonttbl{\f0\fcharset2 Symbol;}}\f0\fs40 a\'b7})"));
    QVERIFY(FirstRowWithInk(Paint(document, Qt::black, Qt::white)) >= 0);
    QVERIFY(document.begin().begin().fragment().charFormat().fontFamilies().toStringList().isEmpty());
}

void RtfReaderTest::RaisedTextIsPaintedHigher()
{
    QTextDocument document;
    const auto top = [&document](const char *rtf) {
        SetRichText(document, QString(rtf));
        return FirstRowWithInk(Paint(document, Qt::black, Qt::white));
    };
    const int onLine = top(R"({\rtf1\fs24 x})");
    const int raised = top(R"({\rtf1\fs24\up5 x})");
    const int lowered = top(R"({\rtf1\fs24\dn5 x})");
    QVERIFY2(raised >= 0 && raised < onLine && onLine < lowered,
             qPrintable(QString("%1 %2 %3").arg(raised).arg(onLine).arg(lowered)));
    // 2.5 points are 3 pixels of 96 dpi; the rest is the estimate of the font's height.
    QVERIFY(std::abs(onLine - raised - 3) <= 1);
}

// As in a list: what follows the tab stands above the lines that the text goes on with.
void RtfReaderTest::ATabReachesTheColumnOfAHangingIndent()
{
    QTextDocument document;
    document.setTextWidth(200);
    SetRichText(document,
                QString(R"({\rtf1\li1200\fi-900\tx1200 a\tab )") + QString("word ").repeated(20) + "}");
    document.documentLayout()->documentSize(); // lays it out
    const QTextLayout *lines = document.begin().layout();
    QVERIFY(lines->lineCount() > 1);
    const double column = lines->lineAt(0).cursorToX(2);
    const double wrapped = lines->lineAt(1).cursorToX(lines->lineAt(1).textStart());
    QVERIFY2(std::abs(column - wrapped) < 1, qPrintable(QString("%1 %2").arg(column).arg(wrapped)));
}

namespace {
// Where the text behind the tab begins on the first line, in twips from the margin.
int ColumnBehindTheTab(QTextDocument &document, const char *rtf)
{
    document.setTextWidth(900);
    document.setDocumentMargin(0);
    SetRichText(document, QString(rtf));
    document.documentLayout()->documentSize();
    const QTextLine line = document.begin().layout()->lineAt(0);
    return int(std::lround(line.cursorToX(int(document.begin().text().lastIndexOf('\t') + 1)) * 15));
}
} // namespace

void RtfReaderTest::TabsReachWhereOtherProgramsPutThem()
{
    QTextDocument document;
    const auto column = [&](const char *rtf) { return ColumnBehindTheTab(document, rtf); };
    QCOMPARE(column(R"({\rtf1 a\tab b})"), 720);
    QCOMPARE(column(R"({\rtf1\deftab1000 a\tab\tab b})"), 2000);
    QCOMPARE(column(R"({\rtf1\fi-360\li720 1.\tab b})"), 720); // the indent itself is a stop
    QCOMPARE(column(R"({\rtf1\fi-360\li900 1.\tab\tab b})"), 1440);
    QCOMPARE(column(R"({\rtf1\li500 a\tab b})"), 720);
    QCOMPARE(column(R"({\rtf1\deftab500\li600\tx1200 a\tab\tab b})"), 1500);
    QCOMPARE(column(R"({\rtf1 a\tab b})"), 720); // nothing of the text before
    // And after storing.
    for (const char *rtf : {R"({\rtf1\deftab1000 a\tab\tab b})", R"({\rtf1\fi-360\li900 1.\tab\tab b})",
                            R"({\rtf1\deftab500\li600\tx1200 a\tab\tab b})"}) {
        const int before = column(rtf);
        const QString stored = ToRtf(document);
        QCOMPARE(column(qPrintable(stored)), before);
        QCOMPARE(stored.count("\\tx"), QString(rtf).count("\\tx"));
    }
}

void RtfReaderTest::AutomaticColourFollowsThePalette()
{
    QTextDocument document;
    const auto brightestInk = [&document](const char *rtf) {
        SetRichText(document, QString(rtf));
        const QImage image = Paint(document, Qt::white, Qt::black);
        int brightest = 0;
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                brightest = std::max(brightest, qGray(image.pixel(x, y)));
        return brightest;
    };
    QVERIFY(brightestInk(R"({\rtf1{\colortbl;}\cf0 xxx})") > 200);
    QVERIFY(brightestInk(R"({\rtf1{\colortbl\red0\green0\blue0;}\cf0 xxx})") > 200);
    QVERIFY(brightestInk(R"({\rtf1{\colortbl;\red60\green0\blue0;}\cf1 xxx})") < 100);
}

PAUKFIX_TEST(RtfReaderTest)
#include "RtfReaderTest.moc"
