// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wiedererkennung.h"

#include "CardFile.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

using namespace paukfix;

namespace {

QList<CardRecord> Karten(int von, int bis, const QString &wort = "Wort")
{
    QList<CardRecord> karten;
    for (int nummer = von; nummer <= bis; ++nummer) {
        karten << MakeCard(nummer, 0, nummer);
        karten.last().Frage_Klartext = QString("%1 %2").arg(wort).arg(nummer);
    }
    return karten;
}

Kartenabdruck Abdruck(const QList<CardRecord> &karten)
{
    const QTemporaryDir ordner;
    MakeCardFile(ordner.filePath("a.pzb"), karten);
    CardFile datei(ordner.filePath("a.pzb"));
    CardRecordset recordset(datei);
    return Kartenabdruck(recordset);
}

} // namespace

// A box is known by its cards.
class WiedererkennungTest : public QObject
{
    Q_OBJECT

private:
    static Wiedererkennung Erkennen(const std::vector<BekannteBox> &boxen, const Kartenabdruck &abdruck,
                                    const QString &pfad = "/neu.pzb", bool liegtNoch = false)
    {
        return Wiedererkennen(boxen, pfad, abdruck, [=](const QString &) { return liegtNoch; });
    }

private slots:

    void APrintSurvivesItsBytes()
    {
        for (const int karten : {0, 3, 256, 300}) {
            const Kartenabdruck abdruck = Abdruck(Karten(1, karten));
            QCOMPARE(abdruck.IstLeer(), karten == 0);
            QVERIFY(Kartenabdruck::AusBytes(abdruck.Bytes()) == abdruck);
        }
        QVERIFY(Kartenabdruck::AusBytes("kaputt").IstLeer());
        QVERIFY(Kartenabdruck::AusBytes({}).IstLeer());
    }

    void ChangedCardsAreCountedAsOften_data()
    {
        QTest::addColumn<int>("karten");
        QTest::newRow("a small box") << 50;
        QTest::newRow("more cards than a print has") << 2000;
    }

    void ChangedCardsAreCountedAsOften()
    {
        QFETCH(int, karten);
        const Kartenabdruck vorher = Abdruck(Karten(1, karten));
        QCOMPARE(vorher.Mit(vorher).anteil, 1.0);
        QList<CardRecord> danach = Karten(1, karten);
        for (int i = 0; i < karten; i += 4)
            danach[i].Antwort_1_Klartext = "anders";
        const double anteil = vorher.Mit(Abdruck(danach)).anteil;
        QVERIFY2(anteil > 0.65 && anteil < 0.85, qPrintable(QString::number(anteil)));
    }

    void CardsThatCameOrWentDoNotCount()
    {
        const Kartenabdruck vorher = Abdruck(Karten(1, 400));
        QVERIFY(vorher.Mit(Abdruck(Karten(1, 3000))).anteil > 0.99);
        QVERIFY(vorher.Mit(Abdruck(Karten(1, 100))).anteil > 0.99);
        QVERIFY(Abdruck(Karten(1, 3)).Mit(Abdruck(Karten(1, 500))).anteil > 0.99);
    }

    void OtherWordsUnderTheSameNumbersAreOtherCards()
    {
        QCOMPARE(Abdruck(Karten(1, 500)).Mit(Abdruck(Karten(1, 500, "mot"))).anteil, 0.0);
    }

    void CardsWithoutTextTellNothing()
    {
        QList<CardRecord> leer = Karten(1, 20);
        for (CardRecord &karte : leer)
            karte.Frage_Klartext = karte.Antwort_1_Klartext = QString();
        QVERIFY(Abdruck(leer).IstLeer());
    }

    void AtItsPlaceABoxIsKnownAsLongAsHalfOfItIsThere()
    {
        const Kartenabdruck alt = Abdruck(Karten(1, 40));
        const std::vector<BekannteBox> boxen{{7, "/a.pzb", true, alt}};
        QCOMPARE(Erkennen(boxen, Abdruck(Karten(1, 22) + Karten(23, 40, "mot")), "/a.pzb").sicher, 7);
        const Wiedererkennung fraglich =
            Erkennen(boxen, Abdruck(Karten(1, 10) + Karten(11, 40, "mot")), "/a.pzb");
        QVERIFY(!fraglich.sicher);
        QCOMPARE(fraglich.vielleicht, 7);
        const Wiedererkennung anders = Erkennen(boxen, Abdruck(Karten(1, 40, "mot")), "/a.pzb");
        QVERIFY(!anders.sicher && !anders.vielleicht);
        // Without cards there is nothing that would speak against it.
        QCOMPARE(Erkennen(boxen, {}, "/a.pzb").sicher, 7);
    }

    void AMovedBoxIsKnownByItsCards()
    {
        const std::vector<BekannteBox> boxen{{6, "/b.pzb", true, Abdruck(Karten(1, 40, "mot"))},
                                             {7, "/a.pzb", true, Abdruck(Karten(1, 40))}};
        QCOMPARE(Erkennen(boxen, Abdruck(Karten(1, 45))).sicher, 7);
        // A card in four has changed: perhaps.
        const Wiedererkennung fraglich = Erkennen(boxen, Abdruck(Karten(1, 28) + Karten(29, 40, "neu")));
        QVERIFY(!fraglich.sicher);
        QCOMPARE(fraglich.vielleicht, 7);
    }

    void ACopyIsPerhapsTheBoxItWasCopiedFrom()
    {
        const std::vector<BekannteBox> boxen{{7, "/a.pzb", true, Abdruck(Karten(1, 40))}};
        const Wiedererkennung kopie = Erkennen(boxen, Abdruck(Karten(1, 40)), "/b.pzb", true);
        QVERIFY(!kopie.sicher);
        QCOMPARE(kopie.vielleicht, 7);
    }

    void AFewCardsCanBeAlikeByChance()
    {
        const std::vector<BekannteBox> boxen{{7, "/a.pzb", true, Abdruck(Karten(1, 3))}};
        QVERIFY(!Erkennen(boxen, Abdruck(Karten(1, 3))).sicher);
        QCOMPARE(Erkennen(boxen, Abdruck(Karten(1, 3))).vielleicht, 7);
    }

    // Two boxes have changed their names.
    void TwoBoxesThatChangedPlacesKeepTheirHistories()
    {
        const std::vector<BekannteBox> boxen{{1, "/a.pzb", false, Abdruck(Karten(1, 40))},
                                             {2, "/b.pzb", true, Abdruck(Karten(1, 40, "mot"))}};
        QCOMPARE(Erkennen(boxen, Abdruck(Karten(1, 40)), "/b.pzb", true).sicher, 1);
    }

    void ANewBoxIsNone()
    {
        const Wiedererkennung neu = Erkennen({{7, "/a.pzb", true, {}}}, Abdruck(Karten(1, 40)));
        QVERIFY(!neu.sicher && !neu.vielleicht);
        QVERIFY(!Erkennen({}, {}).sicher);
    }
};

PAUKFIX_CORE_TEST(WiedererkennungTest)
#include "WiedererkennungTest.moc"
