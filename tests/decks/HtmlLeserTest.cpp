// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlLeser.h"

#include "RichText.h"
#include "TestProgram.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace paukfix;

class HtmlLeserTest : public QObject
{
    Q_OBJECT

private slots:
    void LinesAndWhiteSpaceAreThoseOfAPage_data();
    void LinesAndWhiteSpaceAreThoseOfAPage();
    void PlainTextStaysPlain();
    void FormatsReachTheCard();
    void WhatIsInALineEndsNoBlock();
    void WhatACardCannotHoldIsTold_data();
    void WhatACardCannotHoldIsTold();
    void PicturesAndSoundsAreTakenOut();
    void ATextThatIsTooLongIsNone();
    void AnyNestingTakesLinearTime_data();
    void AnyNestingTakesLinearTime();
    void AShortTextIsWrittenAsALongOneIs_data();
    void AShortTextIsWrittenAsALongOneIs();
};

void HtmlLeserTest::LinesAndWhiteSpaceAreThoseOfAPage_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << "  a   b\n c\t"
                           << "a b c";
    QTest::newRow("break") << "a<br>b<BR/>c"
                           << "a\nb\nc";
    QTest::newRow("empty line") << "a<br><br>b"
                                << "a\n\nb";
    QTest::newRow("blocks") << "a<div>b</div>c<p>d</p>"
                            << "a\nb\nc\nd";
    QTest::newRow("empty block line") << "a<div><br></div><div>b</div>"
                                      << "a\n\nb";
    QTest::newRow("edges") << "<br><div> a </div><br><br>"
                           << "a";
    QTest::newRow("no-break space") << "&nbsp;10&nbsp;&euro;&nbsp;"
                                    << "10 €";
    QTest::newRow("entities") << "&Uuml;&#228;&#xE4;&amp;lt;&unbekannt;&"
                              << "Üää&lt;&unbekannt;&";
    QTest::newRow("lone signs") << "3 < 5 und 7 > 2"
                                << "3 < 5 und 7 > 2";
    QTest::newRow("comment") << "a<!-- <b>weg</b> -->b"
                             << "ab";
    QTest::newRow("script") << "a<script>if (a < b) alert('weg')</script>b<style>x{}</style>"
                            << "ab";
    QTest::newRow("hidden") << "a<span style='display:none'>weg<br><b>weg</b></span>b"
                            << "ab";
    QTest::newRow("table") << "<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"
                           << "a\nb\nc";
    QTest::newRow("as it stands") << "<pre>a  b\n  c</pre>d  e"
                                  << "a  b\n  c\nd e";
    QTest::newRow("kept spaces") << "<span style=\"white-space: pre-wrap\"> a  b </span>"
                                 << " a  b ";
    QTest::newRow("ruby") << "<ruby>漢<rp>(</rp><rt>かん</rt></ruby>"
                          << "漢(かん)";
}

void HtmlLeserTest::LinesAndWhiteSpaceAreThoseOfAPage()
{
    QFETCH(const QString, html);
    QFETCH(const QString, text);
    QCOMPARE(HtmlLesen(html).text.text, text);
}

void HtmlLeserTest::PlainTextStaysPlain()
{
    const auto text = AlsKartentext(HtmlLesen("a<br>b &amp; c").text);
    QCOMPARE(text->reich, "a\r\nb & c");
    QCOMPARE(text->klar, "a\r\nb & c");
    // What looks like RTF is a text all the same.
    const auto falsches = AlsKartentext(HtmlLesen("{\\rtf1 a}").text);
    QVERIFY(IsRtf(falsches->reich));
    QTextDocument document;
    SetRichText(document, falsches->reich);
    QCOMPARE(PlainText(document), "{\\rtf1 a}");
}

void HtmlLeserTest::FormatsReachTheCard()
{
    const auto text = AlsKartentext(
        HtmlLesen("x<b>f<i>k</i></b><u>u</u><s>s</s>H<sub>2</sub>m<sup>2</sup><span style='color:#ff0000;"
                  "font-size:20px;font-family:\"DejaVu Serif\",serif'>r</span><div "
                  "style='text-align:center'>m</div>")
            .text);
    QVERIFY(IsRtf(text->reich));
    QCOMPARE(text->klar, "xfkusH2m2r\r\nm");
    QTextDocument document;
    QVERIFY(SetRichText(document, text->reich));
    const auto format = [&](int place) {
        QTextCursor cursor(&document);
        cursor.setPosition(place + 1);
        return cursor.charFormat();
    };
    QVERIFY(format(0).fontWeight() < QFont::Bold);
    QCOMPARE(format(1).fontWeight(), int(QFont::Bold));
    QVERIFY(format(2).fontItalic() && format(2).fontWeight() == QFont::Bold);
    QVERIFY(format(3).fontUnderline());
    QVERIFY(format(4).fontStrikeOut());
    QCOMPARE(format(6).verticalAlignment(), QTextCharFormat::AlignSubScript);
    QCOMPARE(format(8).verticalAlignment(), QTextCharFormat::AlignSuperScript);
    QCOMPARE(format(9).foreground().color(), QColor(255, 0, 0));
    QCOMPARE(format(9).fontPointSize(), 15.0);
    QCOMPARE(format(9).fontFamilies().toStringList(), QStringList{"DejaVu Serif"});
    QCOMPARE(document.lastBlock().blockFormat().alignment(), Qt::AlignHCenter);
}

void HtmlLeserTest::WhatIsInALineEndsNoBlock()
{
    const Lauftext text = HtmlLesen("<b>a<div style='text-align:right'>b</b>c</div>d</b>e").text;
    QCOMPARE(text.text, "a\nbc\nde");
    QCOMPARE(text.laeufe.size(), 2U);
    QVERIFY(text.laeufe[0].format.fett);
    QVERIFY(!text.laeufe[1].format.fett);
    QCOMPARE(text.laeufe[1].von, text.text.indexOf('e'));
    QCOMPARE(text.absaetze.size(), 2U);
    QCOMPARE(text.absaetze[0].ausrichtung, Ausrichtung::Rechts);
    QCOMPARE(text.absaetze[1].von, text.text.indexOf('d'));
}

void HtmlLeserTest::WhatACardCannotHoldIsTold_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<unsigned>("rest");
    QTest::newRow("nothing") << "<b>a</b>" << 0U;
    QTest::newRow("background") << "<span style='background-color: yellow'>a</span>"
                                << unsigned(HtmlRest::Hintergrund);
    QTest::newRow("no background") << "<span style='background-color: transparent'>a</span>" << 0U;
    QTest::newRow("link") << "<a href='http://example.invalid'>a</a>" << unsigned(HtmlRest::Verweis);
    QTest::newRow("film") << "<video src='a.mp4'></video>" << unsigned(HtmlRest::Video);
    QTest::newRow("table") << "<table><tr><td>a</td></tr></table>" << unsigned(HtmlRest::Tabelle);
    QTest::newRow("list") << "<ul><li>a</li></ul>" << unsigned(HtmlRest::Liste);
    QTest::newRow("script") << "<script>a</script>" << unsigned(HtmlRest::Skript);
}

void HtmlLeserTest::WhatACardCannotHoldIsTold()
{
    QFETCH(const QString, html);
    QFETCH(const unsigned, rest);
    QCOMPARE(HtmlLesen(html).rest, rest);
}

void HtmlLeserTest::PicturesAndSoundsAreTakenOut()
{
    const GelesenesHtml gelesen = HtmlLesen("a <img src=\"&Auml;pfel &amp; Birnen.png\"><IMG SRC=b.png "
                                            "ALT='x'> [sound:ja&amp;nein.mp3]b[sound:c.wav]");
    QCOMPARE(gelesen.text.text, "a b");
    QCOMPARE(gelesen.bilder, (QStringList{"Äpfel & Birnen.png", "b.png"}));
    QCOMPARE(gelesen.toene, (QStringList{"ja&nein.mp3", "c.wav"}));
}

void HtmlLeserTest::ATextThatIsTooLongIsNone()
{
    QVERIFY(AlsKartentext(HtmlLesen(QString(900'000, 'x')).text));
    QVERIFY(!AlsKartentext(HtmlLesen(QString(1'000'001, 'x')).text));
    QVERIFY(!AlsKartentext(HtmlLesen(QString("x<br>").repeated(300'000)).text));
}

void HtmlLeserTest::AnyNestingTakesLinearTime_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("blocks") << QString("<div>").repeated(400'000);
    QTest::newRow("formats") << QString("<b><i>").repeated(300'000) + "x" +
                                    QString("</i></b>").repeated(300'000);
    QTest::newRow("ends without a beginning")
        << QString("<b>").repeated(500) + QString("</u>").repeated(500'000);
    QTest::newRow("brackets") << QString("[sound:").repeated(200'000);
    QTest::newRow("ampersands") << QString("&").repeated(1'000'000);
    QTest::newRow("open comments") << QString("<!--").repeated(500'000);
    QTest::newRow("open tags") << QString("<a ").repeated(500'000);
    QTest::newRow("attributes") << "<a " + QString("b=c ").repeated(500'000) + ">";
    QTest::newRow("styles") << QString("<b style='color:red;x'>").repeated(100'000);
    QTest::newRow("fonts") << QString("<font face=a%1>x").repeated(50'000);
}

void HtmlLeserTest::AnyNestingTakesLinearTime()
{
    QFETCH(const QString, html);
    HtmlLesen(html); // the test's own time would tell
}

void HtmlLeserTest::AShortTextIsWrittenAsALongOneIs_data()
{
    QTest::addColumn<QStringList>("besondere");
    QTest::newRow("usual characters") << QStringList();
    QTest::newRow("those that a document changes")
        << QStringList{"\t", "\r", "\u0085", "\u00A0", "\u2028", "\u2029", QString(QChar(0xFDD0)), "\uFFFC"};
}

// A long text goes through a document: what a short one is written as must be its beginning.
void HtmlLeserTest::AShortTextIsWrittenAsALongOneIs()
{
    QFETCH(const QStringList, besondere);
    const QStringList stuecke =
        QStringList{"Wort", " ", "ä", "\\", "{}", "\n", "€", "\u00AD", "\u2011", "😀", "\n\n", "ß ñ"} +
        besondere;
    quint32 zahl = 1; // the same texts each time
    const auto naechste = [&zahl](quint32 grenze) {
        zahl = zahl * 1'664'525 + 1'013'904'223;
        return (zahl >> 16) % grenze;
    };
    for (int mal = 0; mal < 300; ++mal) {
        Lauftext text;
        text.schriften = {"Arial", "Größe; 1"};
        for (quint32 lauf = 0, laeufe = 1 + naechste(6); lauf < laeufe; ++lauf) {
            Laufformat format;
            format.fett = naechste(2) == 1;
            format.kursiv = naechste(3) == 1;
            format.unterstrichen = naechste(4) == 1;
            format.durchgestrichen = naechste(4) == 1;
            format.lage = static_cast<signed char>(naechste(5) == 1 ? 1 : naechste(5) == 1 ? -1 : 0);
            format.versatz = static_cast<short>(naechste(6) == 1 ? 60 : naechste(6) == 1 ? -45 : 0);
            format.halbpunkte = static_cast<short>(naechste(3) == 1 ? 8 + naechste(60) : 0);
            format.schrift = static_cast<int>(naechste(3)) - 1;
            if (naechste(3) == 1)
                format.farbe = naechste(3) == 1 ? 0xFF000000U : 0xFF102030U;
            text.laeufe.push_back({text.text.size(), format});
            for (quint32 stueck = 0, alle = 1 + naechste(6); stueck < alle; ++stueck)
                text.text += stuecke[static_cast<qsizetype>(naechste(static_cast<quint32>(stuecke.size())))];
        }
        text.text += 'x';
        for (qsizetype zeichen = 0; zeichen < text.text.size(); ++zeichen)
            if ((zeichen == 0 || text.text[zeichen - 1] == '\n') && naechste(3) == 1)
                text.absaetze.push_back({zeichen, static_cast<Ausrichtung>(naechste(4))});
        if (!text.IstFormatiert())
            continue;
        const QString ende = "\\par\r\n}\r\n";
        const QString kurz = AlsKartentext(text)->reich;
        QVERIFY(kurz.endsWith(ende));
        const QString rest(10'001, 'y');
        text.text += rest;
        QCOMPARE(kurz.chopped(ende.size()) + rest + ende, AlsKartentext(text)->reich);
    }
}

PAUKFIX_TEST(HtmlLeserTest)
#include "HtmlLeserTest.moc"
