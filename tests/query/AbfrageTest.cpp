// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Abfrage.h"

#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "TestZufall.h"

#include <QTest>

#include <map>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Folge = std::array<int, AntwortAnzahl>;

} // namespace

class AbfrageTest : public QObject
{
    Q_OBJECT

private slots:

    void TypedAnswersAreComparedExactly_data()
    {
        QTest::addColumn<QString>("klartext");
        QTest::addColumn<QString>("eingabe");
        QTest::addColumn<bool>("richtig");
        QTest::newRow("equal") << "Berlin"
                               << "Berlin" << true;
        QTest::newRow("a letter and its dots") << "Bär"
                                               << "Ba\u0308r" << true;
        QTest::newRow("dots on the card") << "Ba\u0308r"
                                          << "Bär" << true;
        QTest::newRow("no dots") << "Bär"
                                 << "Bar" << false;
        QTest::newRow("only alike") << u"x\u00B2"_s << "x2" << false;
        QTest::newRow("other case") << "Berlin"
                                    << "berlin" << false;
        QTest::newRow("blanks around the input") << "Berlin"
                                                 << "  Berlin   " << true;
        QTest::newRow("tab around the input") << "Berlin"
                                              << "Berlin\t" << false;
        QTest::newRow("no-break space is no blank") << "Berlin" << u"Berlin\u00a0"_s << false;
        QTest::newRow("blank inside") << "Ber lin"
                                      << "Berlin" << false;
        QTest::newRow("number stays text") << "007"
                                           << "7" << false;
        QTest::newRow("both empty") << ""
                                    << "" << true;
        QTest::newRow("blanks for nothing") << ""
                                            << "   " << true;
        QTest::newRow("umlauts") << "Größe"
                                 << "Größe" << true;
        QTest::newRow("hint") << "Berlin Hinweis: seit 1990"
                              << "Berlin" << true;
        QTest::newRow("hint, blanks around the input") << "Berlin Hinweis: seit 1990"
                                                       << " Berlin  " << true;
        QTest::newRow("hint, other case") << "Berlin Hinweis: seit 1990"
                                          << "berlin" << false;
        QTest::newRow("hint typed too") << "Berlin Hinweis: x"
                                        << "Berlin Hinweis: x" << false;
        QTest::newRow("hint on its own line") << "Berlin\r\nHinweis: x"
                                              << "Berlin" << true;
        QTest::newRow("small hinweis is no hint") << "Berlin hinweis: x"
                                                  << "Berlin" << false;
        QTest::newRow("hint without colon") << "Berlin Hinweis"
                                            << "Berlin" << false;
        QTest::newRow("nothing before the hint") << "Hinweis: x"
                                                 << "" << true;
        QTest::newRow("first hint counts") << "a Hinweis: b Hinweis: c"
                                           << "a" << true;
        QTest::newRow("trailing blanks, no hint") << "Berlin  "
                                                  << "Berlin" << false;
        QTest::newRow("trailing blanks typed too") << "Berlin  "
                                                   << "Berlin  " << false;
        QTest::newRow("lines joined") << "eins\r\nzwei"
                                      << "eins\r\nzwei" << true;
        QTest::newRow("lines against one line") << "eins\r\nzwei"
                                                << "einszwei" << true;
        QTest::newRow("lone line feed stays") << "eins\nzwei"
                                              << "einszwei" << false;
        QTest::newRow("input is trimmed before its lines are joined") << "Berlin"
                                                                      << "Berlin \r\n"
                                                                      << false;
        QTest::newRow("line break after the input") << "Berlin"
                                                    << "Berlin\r\n"
                                                    << true;
        QTest::newRow("joker, empty") << "Joker"
                                      << "" << true;
        QTest::newRow("joker, anything") << "Joker"
                                         << "irgendwas" << true;
        QTest::newRow("joker with hint") << "Joker Hinweis: frei"
                                         << "x" << true;
        QTest::newRow("joker with a blank") << "Joker "
                                            << "x" << false;
        QTest::newRow("small joker") << "joker"
                                     << "x" << false;
    }

    void TypedAnswersAreComparedExactly()
    {
        QFETCH(QString, klartext);
        QFETCH(QString, eingabe);
        QFETCH(bool, richtig);
        QCOMPARE(GetippteAntwortRichtig(klartext, eingabe), richtig);
    }

    void TicksAreRightOnlyWhenAllFiveAgree()
    {
        for (int kreuze = 0; kreuze < 32; ++kreuze) {
            for (int loesung = 0; loesung < 32; ++loesung) {
                std::array<bool, AntwortAnzahl> k{}, l{};
                for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
                    k[i] = (kreuze >> i & 1) != 0;
                    l[i] = (loesung >> i & 1) != 0;
                }
                QCOMPARE(KreuzeRichtig(k, l), kreuze == loesung);
            }
        }
    }

    void ShufflingDrawsAgainWhileAPlaceIsTaken()
    {
        TestZufall zufall({0.99, 0.81, 0.0, 0.19, 0.4, 0.5, 0.2, 0.8, 0.6});
        QCOMPARE(AntwortenMischen(zufall), (Folge{4, 0, 2, 1, 3}));
        QCOMPARE(zufall.zahlen.size(), std::size_t(0));
    }

    void ShufflingGivesEachOrderItsChance()
    {
        MersenneZufall zufall;
        std::map<Folge, int> gezaehlt;
        for (int i = 0; i < 12'000; ++i)
            ++gezaehlt[AntwortenMischen(zufall)];
        QCOMPARE(gezaehlt.size(), std::size_t(120));
        for (const auto &[folge, anzahl] : gezaehlt)
            QVERIFY2(anzahl > 50 && anzahl < 160, qPrintable(QString::number(anzahl)));
    }

    void EveryRunDrawsTheSameNumbers()
    {
        MersenneZufall eine, andere;
        QCOMPARE(eine.Rnd(), 3499211612.0 / 4294967296.0);
        andere.Rnd();
        for (int i = 0; i < 1000; ++i) {
            const double zahl = eine.Rnd();
            QVERIFY(zahl >= 0 && zahl < 1);
            QCOMPARE(andere.Rnd(), zahl);
        }
    }

    void EachVerdictHasItsSlots()
    {
        Abfragekarte karte;
        karte.Medium = {"", "1", "2", "3", "4", "5", "6", "7", "8"};
        QCOMPARE(BildNachUrteil(karte, true), "2");
        QCOMPARE(BildNachUrteil(karte, false), "3");
        QCOMPARE(KlangNachUrteil(karte, true), "7");
        QCOMPARE(KlangNachUrteil(karte, false), "8");
        karte.Medium[3].clear();
        karte.Medium[8].clear();
        QCOMPARE(BildNachUrteil(karte, false), "2");
        QCOMPARE(KlangNachUrteil(karte, false), "7");
        karte.Medium[2].clear();
        karte.Medium[7].clear();
        QCOMPARE(BildNachUrteil(karte, true), "");
        QCOMPARE(BildNachUrteil(karte, false), "");
        QCOMPARE(KlangNachUrteil(karte, false), "");
        karte.Medium[3] = "3";
        QCOMPARE(BildNachUrteil(karte, true), "");
    }
};

PAUKFIX_APPLESS_TEST(AbfrageTest)
#include "AbfrageTest.moc"
