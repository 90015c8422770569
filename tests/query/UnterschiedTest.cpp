// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Unterschied.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What parts a typed answer from the solution.
class UnterschiedTest : public QObject
{
    Q_OBJECT

private:
    // The text with its marks in brackets.
    static QString Markiert(QString text, const QList<Stelle> &marken)
    {
        for (qsizetype i = marken.size(); i-- > 0;) {
            text.insert(marken[i].anfang + marken[i].laenge, u']');
            text.insert(marken[i].anfang, u'[');
        }
        return text;
    }

private slots:

    void DifferingLettersAreMarkedInBothTexts_data()
    {
        QTest::addColumn<QString>("eingabe");
        QTest::addColumn<QString>("loesung");
        QTest::addColumn<QString>("links");
        QTest::addColumn<QString>("rechts");
        QTest::addColumn<QString>("worte");
        const auto zeile = [](const char *eingabe, const char *loesung, const char *links, const char *rechts,
                              const char *worte) {
            QTest::addRow("%s / %s", eingabe, loesung)
                << QString::fromUtf8(eingabe) << QString::fromUtf8(loesung) << QString::fromUtf8(links)
                << QString::fromUtf8(rechts) << QString::fromUtf8(worte);
        };
        zeile("gingko", "Ginkgo", "[g]in[gk]o", "[G]in[kg]o",
              "Großschreibung; zwei Buchstaben haben den Platz getauscht");
        zeile("Berlin", "berlin", "[B]erlin", "[b]erlin", "Kleinschreibung");
        zeile("bERLIN", "Berlin", "[bERLIN]", "[Berlin]", "Groß- und Kleinschreibung");
        zeile("Rytmus", "Rhythmus", "Rytmus", "R[h]yt[h]mus", "2 Buchstaben fehlen");
        zeile("Adresse", "Addresse", "Adresse", "A[d]dresse", "ein Buchstabe fehlt");
        zeile("Addresse", "Adresse", "A[d]dresse", "Adresse", "ein Buchstabe zu viel");
        zeile("Maler", "Mahler", "Maler", "Ma[h]ler", "ein Buchstabe fehlt");
        zeile("Seide", "Seite", "Sei[d]e", "Sei[t]e", "ein Buchstabe ist anders");
        zeile("1848", "1849", "184[8]", "184[9]", "eine Ziffer ist anders");
        zeile("New York", "NewYork", "New[ ]York", "NewYork", "ein Leerzeichen zu viel");
        zeile("Berlin", "Berlin  ", "Berlin", "Berlin[  ]", "2 Leerzeichen fehlen");
        zeile("ja nein", "ja, nein", "ja nein", "ja[,] nein", "ein Zeichen fehlt");
        zeile("Bal", "Ball", "Bal", "Ba[l]l", "ein Buchstabe fehlt");
        zeile("badc", "abcd", "[badc]", "[abcd]", "2-mal haben zwei Buchstaben den Platz getauscht");
        zeile("Gluck", "Glück", "Gl[u]ck", "Gl[ü]ck", "ein Buchstabe ist anders");
        zeile("strasse", "Straße", "[s]tra[ss]e", "[S]tra[ß]e", nullptr);
    }

    void DifferingLettersAreMarkedInBothTexts()
    {
        QFETCH(QString, eingabe);
        QFETCH(QString, loesung);
        QFETCH(QString, links);
        QFETCH(QString, rechts);
        QFETCH(QString, worte);
        const Unterschied unterschied = UnterschiedVon(eingabe, loesung);
        QCOMPARE(Markiert(eingabe, unterschied.inEingabe), links);
        QCOMPARE(Markiert(loesung, unterschied.inLoesung), rechts);
        if (!worte.isEmpty())
            QCOMPARE(unterschied.worte, worte);
    }

    void WhatIsTheSameHasNoMarks_data()
    {
        QTest::addColumn<QString>("eingabe");
        QTest::addColumn<QString>("loesung");
        QTest::newRow("equal") << u"Ginkgo"_s << u"Ginkgo"_s;
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("nothing typed") << u""_s << u"Ginkgo"_s;
        QTest::newRow("no solution") << u"Ginkgo"_s << u""_s;
        QTest::newRow("combining marks") << u"Glu\u0308ck"_s << u"Glück"_s;
        QTest::newRow("line breaks") << u"eins\nzwei"_s << u"eins\u2029zwei"_s;
        QTest::newRow("something else") << u"weiß nicht"_s << u"Ginkgo"_s;
    }

    void WhatIsTheSameHasNoMarks()
    {
        QFETCH(QString, eingabe);
        QFETCH(QString, loesung);
        const Unterschied unterschied = UnterschiedVon(eingabe, loesung);
        QVERIFY(unterschied.inEingabe.isEmpty());
        QVERIFY(unterschied.inLoesung.isEmpty());
        QCOMPARE(unterschied.worte, QString());
    }

    // A mark never parts what a reader sees as one letter.
    void AMarkHoldsWholeLetters()
    {
        const QString eingabe = u"a\u0308b\U0001F600c"_s, loesung = u"ab\U0001F601c"_s;
        const Unterschied unterschied = UnterschiedVon(eingabe, loesung);
        QCOMPARE(unterschied.inEingabe, (QList<Stelle>{{0, 2}, {3, 2}}));
        QCOMPARE(unterschied.inLoesung, (QList<Stelle>{{0, 1}, {2, 2}}));
    }

    void MarksBehindALineBreakStandWhereTheTextHasThem()
    {
        const Unterschied unterschied = UnterschiedVon(u"eins\nzwai", u"eins\r\nzwei");
        QCOMPARE(unterschied.inEingabe, (QList<Stelle>{{7, 1}}));
        QCOMPARE(unterschied.inLoesung, (QList<Stelle>{{8, 1}}));
    }

    // A text of any length takes no time: it is not compared.
    void LongTextsAreLeftAlone()
    {
        const QString lang = u"Ein langer Satz. "_s.repeated(100'000);
        QVERIFY(UnterschiedVon(lang + u'x', lang + u'y').worte.isEmpty());
        QVERIFY(UnterschiedVon(u"x", lang).worte.isEmpty());
        QVERIFY(UnterschiedVon(u"e"_s + u"\u0301"_s.repeated(100'000), u"e").worte.isEmpty());
        const QString noch = u"Ein Satz. "_s.repeated(39);
        QCOMPARE(UnterschiedVon(noch + u'x', noch + u'y').worte, u"ein Buchstabe ist anders"_s);
    }
};

PAUKFIX_TEST(UnterschiedTest)
#include "UnterschiedTest.moc"
