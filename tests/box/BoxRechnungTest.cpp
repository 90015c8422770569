// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"

#include "TestProgram.h"
#include "TestZufall.h"
#include "Wuerfel.h"

#include <QTest>

#include <deque>
#include <set>

using namespace paukfix;

namespace {

// The box with these numbers of cards in compartments 0, 1, 2, ...
FachTabelle Box(const QList<int> &anzahl)
{
    FachTabelle tabelle = FachStartwerte();
    for (qsizetype i = 0; i < anzahl.size(); ++i)
        tabelle[static_cast<std::size_t>(i)].Anzahl = static_cast<qint16>(anzahl[i]);
    return tabelle;
}

double Fuer(int augen)
{
    return (augen - 0.5) / 6;
}

} // namespace

class BoxRechnungTest : public QObject
{
    Q_OBJECT

private slots:

    void BarsFillInProportionToCapacity()
    {
        const BoxBild bild = BoxRechnen(Box({0, 25, 10, 125, 100, 700}));
        QCOMPARE(bild.Breite[1], 100);
        QCOMPARE(bild.Breite[2], 31);
        QCOMPARE(bild.Breite[3], 340);
        QCOMPARE(bild.Breite[4], 258); // 257.5
        QCOMPARE(bild.Breite[5], 1750);
    }

    void WidthsAreRoundedHalfToEven_data()
    {
        QTest::addColumn<int>("fach");
        QTest::addColumn<int>("anzahl");
        QTest::addColumn<int>("breite");
        QTest::newRow("4: 51.5 is even above") << 4 << 20 << 52;
        QTest::newRow("4: 154.5 is even below") << 4 << 60 << 154;
        QTest::newRow("5: 2.5 is even below") << 5 << 1 << 2;
        QTest::newRow("5: 7.5 is even above") << 5 << 3 << 8;
        QTest::newRow("5: 12.5 is even below") << 5 << 5 << 12;
        QTest::newRow("2: 3.1") << 2 << 1 << 3;
        QTest::newRow("2: 15.5 is even above") << 2 << 5 << 16;
        QTest::newRow("3: 2.72") << 3 << 1 << 3;
    }

    void WidthsAreRoundedHalfToEven()
    {
        QFETCH(int, fach);
        QFETCH(int, anzahl);
        QFETCH(int, breite);
        FachTabelle tabelle = Box({});
        tabelle[static_cast<std::size_t>(fach)].Anzahl = static_cast<qint16>(anzahl);
        QCOMPARE(BoxRechnen(tabelle).Breite[static_cast<std::size_t>(fach)], breite);
    }

    void OverfullBarsStopAtTheirFullWidth()
    {
        FachTabelle tabelle = Box({0, 51, 101, 251, 401, 701});
        const BoxBild bild = BoxRechnen(tabelle);
        for (std::size_t i = 1; i < FachSichtbar; ++i)
            QCOMPARE(bild.Breite[i], tabelle[i].BreiteMax);
    }

    // 8,192 / 50 * 200 twips is more than 16 bits hold.
    void CrammedCompartmentDoesNotOverflow()
    {
        FachTabelle tabelle = Box({0, 8192});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 1);
        QCOMPARE(BoxRechnen(tabelle).Breite[1], 200);
        tabelle = Box({0, 32767, 32767, 32767, 32767, 32767});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 1);
        QCOMPARE(BoxRechnen(tabelle).Breite[5], 1750);
    }

    void TheNeuBarKeepsItsWidth()
    {
        const BoxBild bild = BoxRechnen(Box({350}));
        QCOMPARE(bild.Breite[0], 0);
        QVERIFY(bild.balken[0]);
    }

    void BarsAreVisibleOnlyWithCards()
    {
        FachTabelle tabelle = Box({0, 0, 1, 0, 7, 0});
        QCOMPARE(BoxRechnen(tabelle).balken,
                 (std::array<bool, FachSichtbar>{true, false, true, false, true, false}));
    }

    void FullestIsTheHighestRatioNotTheHighestCount()
    {
        FachTabelle tabelle = Box({700, 10, 30, 60, 100, 200});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 2);
    }

    void NeuIsNeverFullestWhileOthersHaveCards()
    {
        FachTabelle tabelle = Box({700, 0, 0, 0, 0, 1});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 5);
    }

    void OnTiesTheLowerCompartmentIsFullest()
    {
        FachTabelle tabelle = Box({0, 0, 10, 25, 40, 70});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 2);
        tabelle = Box({0, 5, 10, 25, 40, 70});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 1);
        tabelle = Box({0, 0, 0, 0, 4, 7});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 4);
    }

    void WithOneToFiveEmptyNeuIsFullest()
    {
        FachTabelle tabelle = Box({3, 0, 0, 0, 0, 0, 9});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 0);
        tabelle = Box({});
        QCOMPARE(BoxRechnen(tabelle).VollstesFach, 0);
    }

    void TheCapacityGuardNamesTheCompartmentInTheWay_data()
    {
        QTest::addColumn<QList<int>>("anzahl");
        QTest::addColumn<int>("fach");
        QTest::addColumn<int>("voll"); // -1: none
        QTest::newRow("empty box") << QList<int>{} << 0 << -1;
        QTest::newRow("all at capacity, Neu") << QList<int>{700, 50, 100, 250, 400, 700} << 0 << -1;
        QTest::newRow("all at capacity, 1") << QList<int>{700, 50, 100, 250, 400, 700} << 1 << -1;
        QTest::newRow("all at capacity, 5") << QList<int>{700, 50, 100, 250, 400, 700} << 5 << -1;
        QTest::newRow("Neu may be over its capacity") << QList<int>{701} << 0 << -1;
        QTest::newRow("Neu, 1 over") << QList<int>{1, 51} << 0 << 1;
        QTest::newRow("Neu, 1 and 2 over") << QList<int>{1, 51, 101} << 0 << 1;
        QTest::newRow("Neu, 2 over") << QList<int>{1, 50, 101} << 0 << 2;
        QTest::newRow("1 itself over") << QList<int>{1, 51} << 1 << -1;
        QTest::newRow("1, 2 over") << QList<int>{1, 51, 101} << 1 << 2;
        QTest::newRow("2, 3 over comes first") << QList<int>{0, 51, 1, 251} << 2 << 3;
        QTest::newRow("2, 1 over") << QList<int>{0, 51, 1, 250} << 2 << 1;
        QTest::newRow("2 itself over") << QList<int>{0, 0, 101} << 2 << -1;
        QTest::newRow("3, 4 over") << QList<int>{0, 0, 0, 1, 401} << 3 << 4;
        QTest::newRow("4, 5 over") << QList<int>{0, 0, 0, 0, 1, 701} << 4 << 5;
        QTest::newRow("5, done cards have no capacity") << QList<int>{0, 0, 0, 0, 0, 1, 9999} << 5 << -1;
        QTest::newRow("5, 1 over") << QList<int>{0, 51, 0, 0, 0, 1} << 5 << 1;
        QTest::newRow("5 itself over") << QList<int>{0, 0, 0, 0, 0, 701} << 5 << -1;
    }

    void TheCapacityGuardNamesTheCompartmentInTheWay()
    {
        QFETCH(QList<int>, anzahl);
        QFETCH(int, fach);
        QFETCH(int, voll);
        QCOMPARE(ZuVollesFach(Box(anzahl), fach).value_or(-1), voll);
    }

    void RightMovesOnAndWrongFallsBack()
    {
        const std::array<int, 6> richtig{2, 2, 3, 4, 5, 6};
        for (int fach = 0; fach < 6; ++fach) {
            QCOMPARE(ZielFach(fach, true), richtig[static_cast<std::size_t>(fach)]);
            QCOMPARE(ZielFach(fach, false), 1);
        }
    }

    void TheDieCountsAllButDoneCards()
    {
        QCOMPARE(KartenImSpiel(Box({1, 2, 3, 4, 5, 6, 100})), 21);
        QCOMPARE(KartenImSpiel(Box({0, 0, 0, 0, 0, 0, 100})), 0);
    }

    void SixPipsAreNeuAndAllFacesComeUp()
    {
        const FachTabelle box = Box({1, 1, 1, 1, 1, 1});
        for (int augen = 1; augen <= 6; ++augen) {
            TestZufall zufall({Fuer(augen)});
            const Wurf wurf = Wuerfeln(box, zufall);
            QCOMPARE(wurf.augen, augen);
            QCOMPARE(wurf.fach, augen % 6);
            QVERIFY(wurf.angenommen);
        }
        TestZufall rand({0.0, 0.9999999});
        QCOMPARE(Wuerfeln(box, rand).augen, 1);
        QCOMPARE(Wuerfeln(box, rand).augen, 6);
    }

    void RollsOntoEmptyOrBlockedCompartmentsAreRejected_data()
    {
        QTest::addColumn<QList<int>>("anzahl");
        QTest::addColumn<QList<int>>("spielbar");
        QTest::newRow("only 3 has cards") << QList<int>{0, 0, 0, 2} << QList<int>{3};
        QTest::newRow("1 over: it alone") << QList<int>{5, 51, 5, 5, 5, 5} << QList<int>{1};
        QTest::newRow("2 over: not Neu, not 1") << QList<int>{5, 5, 101, 5, 5, 5} << QList<int>{2, 3, 4, 5};
        QTest::newRow("4 over: not 3") << QList<int>{5, 5, 5, 5, 401, 5} << QList<int>{0, 1, 2, 4, 5};
        QTest::newRow("done cards only") << QList<int>{0, 0, 0, 0, 0, 0, 5} << QList<int>{};
        QTest::newRow("1 and 2 over, others empty") << QList<int>{0, 51, 101} << QList<int>{};
    }

    void RollsOntoEmptyOrBlockedCompartmentsAreRejected()
    {
        QFETCH(QList<int>, anzahl);
        QFETCH(QList<int>, spielbar);
        const FachTabelle box = Box(anzahl);
        for (int fach = 0; fach < 6; ++fach)
            QCOMPARE(FachSpielbar(box, fach), spielbar.contains(fach));
        QCOMPARE(IrgendeinFachSpielbar(box), !spielbar.isEmpty());
    }

    // Every run of the program rolls the same.
    void TheFirstRollsAreKnown()
    {
        MersenneZufall zufall;
        const FachTabelle box = Box({1, 1, 1, 1, 1, 1});
        QList<int> augen;
        for (int i = 0; i < 10; ++i)
            augen << Wuerfeln(box, zufall).augen;
        QCOMPARE(augen, (QList<int>{5, 1, 6, 6, 1, 6, 6, 2, 4, 2}));
    }
};

PAUKFIX_CORE_TEST(BoxRechnungTest)
#include "BoxRechnungTest.moc"
