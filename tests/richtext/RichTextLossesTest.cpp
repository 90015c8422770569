// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichTextLosses.h"

#include "RichText.h"
#include "TestProgram.h"

#include <QTest>
#include <QTextDocument>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {
using Loss = RichTextLoss;

QString Rtf(const char *body)
{
    return u"{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}}"
           u"{\\colortbl ;\\red255\\green255\\blue0;}\r\n"_s +
           QString::fromLatin1(body) + u"\\par\r\n}\r\n"_s;
}
} // namespace

class RichTextLossesTest : public QObject
{
    Q_OBJECT

private slots:

    void EachKindIsTold_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<int>("losses");
        const auto row = [](const char *name, const char *body, RichTextLosses losses) {
            QTest::newRow(name) << QString::fromLatin1(body) << int(losses);
        };
        row("picture", "a{\\pict\\wmetafile8\\picw10\\pich10 0100}b", Loss::Pictures);
        row("picture of a newer program",
            "{\\*\\shppict{\\pict{\\*\\picprop\\shplid1025}\\pngblip 8950}}{\\nonshppict{\\pict 00}}",
            Loss::Pictures);
        row("picture as raw bytes", "{\\pict\\bin3 }{\\}b", Loss::Pictures);
        row("object", "{\\object\\objemb{\\*\\objclass Paint}{\\*\\objdata 0105}{\\result{\\pict 00}}}",
            Loss::Objects);
        row("drawing", "{\\shp{\\*\\shpinst\\shpleft0{\\sp{\\sn a}{\\sv b}}}{\\shprslt c}}", Loss::Drawings);
        row("old drawing", "{\\*\\do\\dobxcolumn\\dprect}", Loss::Drawings);
        row("table", "\\trowd\\cellx1000\\cellx2000\\intbl a\\cell b\\cell\\row", Loss::Tables);
        row("nested table",
            "\\trowd\\intbl\\itap2 a\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\nestrow}"
            "{\\nonesttables\\par}\\itap1\\cell\\row",
            Loss::Tables);
        row("symbol that is not read", "{\\field{\\*\\fldinst SYMBOL 74 \\\\j \\\\f Jp}{\\fldrslt J}}",
            Loss::Fields);
        row("symbol without a code", "{\\field{\\*\\fldinst SYMBOL x}{\\fldrslt J}}", Loss::Fields);
        row("old list", "{\\pntext\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1{\\pntxtb\\'B7}}\\fi-200 a",
            Loss::Lists);
        row("list", "{\\listtext 1.\\tab}\\ls1\\ilvl0 a", Loss::Lists);
        row("formula", "{\\mmath{\\*\\moMath{\\mr x}}}", Loss::Formulas);
        row("footnote", "a{\\super\\chftn}{\\footnote\\pard b}", Loss::Footnotes);
        row("comment", "{\\*\\atnid M}{\\*\\atnauthor M}\\chatn{\\*\\annotation b}", Loss::Comments);
        row("field", "{\\field{\\*\\fldinst HYPERLINK \"http://a\"}{\\fldrslt a}}", Loss::Fields);
        row("field in pieces", "{\\field{\\*\\fldinst {PAGE}{ \\\\* X}}{\\fldrslt 1}}", Loss::Fields);
        row("index entry", "a{\\xe a}", Loss::Fields);
        row("header", "{\\header\\pard a}b", Loss::HeadersFooters);
        row("hidden", "a{\\v b}c", Loss::HiddenText);
        row("deleted", "a{\\deleted b}c", Loss::HiddenText);
        row("hidden highlight", "a{\\v\\highlight1 b}c", Loss::HiddenText);
        row("highlight", "a\\highlight1 b\\highlight0 c", Loss::Highlight);
        row("ground", "a{\\cb1 b}", Loss::Highlight);
        row("shaded characters", "{\\chcbpat1 \\'e4}", Loss::Highlight);
        row("shaded paragraph", "\\cbpat1 a\\par\\pard b", Loss::Highlight);
        row("small capitals", "{\\scaps a}", Loss::Effects);
        row("outline", "{\\outl\\u228?}", Loss::Effects);
        row("double underline", "{\\uldb a}", Loss::Effects);
        row("wide letters", "{\\expndtw60 a}", Loss::Effects);
        row("border", "\\brdrt\\brdrs\\brdrw10 a", Loss::Borders);
        row("page", "a\\page b", Loss::Breaks);
        row("unknown", "a{\\*\\neuartig b}", Loss::Other);
        row("unnamed", "a{\\* b}", Loss::Other);
        row("private", "a{\\private b}", Loss::Other);
        row("two", "{\\footnote a}{\\pict 00}", Loss::Footnotes | Loss::Pictures);
        row("deep within", "{{\\b{\\i{\\pict 00}}}}", Loss::Pictures);
    }

    void EachKindIsTold()
    {
        QFETCH(QString, body);
        QFETCH(int, losses);
        QCOMPARE(int(LossesOf(Rtf(body.toLatin1()))), losses);
    }

    void NothingIsToldOfWhatStaysOrIsNotMissed_data()
    {
        QTest::addColumn<QString>("body");
        const auto row = [](const char *name, const char *body) {
            QTest::newRow(name) << QString::fromLatin1(body);
        };
        row("plain", "a");
        row("formats", "{\\b\\i\\ul\\strike\\f0\\fs30\\cf1\\up6\\super a}\\ulnone\\qc\\li100\\tx500 b");
        row("author and styles",
            "{\\info{\\author A}{\\*\\company B}{\\comment c}}{\\stylesheet{\\s0 Normal;}{\\*\\cs1 x;}}"
            "{\\*\\generator Riched20 10;}{\\*\\rsidtbl\\rsid1}{\\*\\themedata 00}{\\*\\defchp\\fs22}a");
        row("empty lists of lists", "{\\*\\listtable{\\list}}{\\*\\listoverridetable}\\ls0 a");
        row("bookmark", "{\\*\\bkmkstart _GoBack}a{\\*\\bkmkend _GoBack}");
        row("switched off", "\\highlight0\\cb0\\caps0\\v0\\expndtw0\\uldb0 a");
        row("on without text", "{\\highlight1}{\\v}{\\caps }a");
        row("on and off again", "\\highlight1\\plain a\\cbpat1\\pard b\\uldb\\ul c");
        row("symbol", "{\\field{\\*\\fldinst SYMBOL 74 \\\\f Wingdings}{\\fldrslt J}}");
        row("empty star", "a{\\*}b");
        row("behind the end", "a}{\\pict 00}");
        row("language and lines", "\\lang1031\\kerning28\\sl276\\slmult1\\widctlpar a");
    }

    void NothingIsToldOfWhatStaysOrIsNotMissed()
    {
        QFETCH(QString, body);
        QCOMPARE(int(LossesOf(Rtf(body.toLatin1()))), 0);
    }

    void TextThatIsNoRtfLosesNothing()
    {
        QCOMPARE(int(LossesOf(u"a {\\pict 00}"_s)), 0);
        QCOMPARE(int(LossesOf(QString())), 0);
    }

    // What our writer writes is whole: nobody is asked twice.
    void OurOwnTextsLoseNothing()
    {
        QTextDocument document;
        SetRichText(document,
                    Rtf("{\\b\\uldb a}{\\pict 00}\\trowd b\\cell\\row{\\highlight1 c}{\\v d}\\page e"));
        QCOMPARE(int(LossesOf(ToRtf(document))), 0);
    }

    void HostileTextsAreReadInLinearTime()
    {
        QString deep = u"{\\rtf1 "_s;
        for (int i = 0; i < 300'000; ++i)
            deep += u"{\\b"_s;
        QCOMPARE(int(LossesOf(deep)), 0);
        QCOMPARE(int(LossesOf(deep + u"{\\pict"_s)), int(Loss::Pictures));
        QCOMPARE(int(LossesOf(u"{\\rtf1 {\\*\\fldinst "_s + QString(1'000'000, u'x') + u"}}"_s)),
                 int(Loss::Fields));
        QCOMPARE(int(LossesOf(u"{\\rtf1}}}}}}{{\\pict"_s)), 0);
    }
};

PAUKFIX_TEST(RichTextLossesTest)
#include "RichTextLossesTest.moc"
