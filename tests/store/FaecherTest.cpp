// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"
#include "CardBulk.h"
#include "CardTransaction.h"
#include "KarteEinordnen.h"
#include "KarteLoeschen.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <random>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// A box on disk, open in a store of its own.
struct Kasten
{
    explicit Kasten(const QList<CardRecord> &karten)
    {
        MakeCardFile(verzeichnis.filePath("box.pzb"), karten);
        clock.perSecond = 1;
        kartei.KarteiPfad = verzeichnis.path();
        Oeffnen();
    }

    void Oeffnen()
    {
        QString name = "box.pzb";
        oeffner.OpenCardFile(name);
        QCOMPARE(name, "box.pzb");
    }

    bool Stehen(int fach)
    {
        kartei.Karten().SetIndex(u"BoxKey");
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, fach);
        return !kartei.Karten().NoMatch() && kartei.Felder().FachNr.Number() == fach;
    }

    // What the engine itself finds in the file.
    FachTabelle Gefunden()
    {
        FachTabelle tabelle = FachStartwerte();
        kartei.Karten().Beside([&](SQLite::Database &database) {
            SQLite::Statement zaehlen(
                database, R"(SELECT "FachNr",count(*),max("FachLfdNr") FROM "Lernkarten" GROUP BY "FachNr")");
            while (zaehlen.executeStep()) {
                Fach &fach = tabelle.at(static_cast<std::size_t>(zaehlen.getColumn(0).getInt()));
                fach.Anzahl = static_cast<qint16>(zaehlen.getColumn(1).getInt());
                fach.LfdMax = static_cast<qint16>(zaehlen.getColumn(2).getInt());
            }
        });
        return tabelle;
    }

    // The number of the card that is asked last in `fach`.
    double Letzte(int fach)
    {
        double nummer = 0;
        kartei.Karten().Beside([&](SQLite::Database &database) {
            SQLite::Statement letzte(
                database,
                R"(SELECT "FrageNr" FROM "Lernkarten" WHERE "FachNr"=?1 ORDER BY "FachLfdNr" DESC LIMIT 1)");
            letzte.bind(1, fach);
            if (letzte.executeStep())
                nummer = letzte.getColumn(0).getDouble();
        });
        return nummer;
    }

    QTemporaryDir verzeichnis;
    TestMeldungen meldungen;
    TestClock clock;
    CardStore kartei;
    KarteiOeffner oeffner{kartei, meldungen, clock};
};

void Importieren(CardStore &kartei, int karten)
{
    CardTransaction zug(kartei.Karten());
    AddSimpleCards(kartei, [&](SimpleCard &karte) {
        karte = {u"Frage"_s, u"Antwort"_s, {}};
        return karten-- > 0;
    });
    zug.Commit();
}

} // namespace

class FaecherTest : public QObject
{
    Q_OBJECT

private slots:

    void ACardPutInBetweenLeavesTheHighestNumber()
    {
        Faecher faecher;
        faecher.Einreihen(2, 7);
        faecher.Einreihen(2, 3);
        QCOMPARE(faecher[2].LfdMax, 7);
        QCOMPARE(faecher[2].Anzahl, 2);
        faecher.Einreihen(2, 9);
        QCOMPARE(faecher[2].LfdMax, 9);
    }

    void DoneCardsFindRoomWhereTheNumbersOfTheNewOnesAreUsedUp()
    {
        Kasten kasten({MakeCard(1, 0, 32767), MakeCard(2, 6, 1), MakeCard(3, 6, 4)});
        CardTransaction zug(kasten.kartei.Karten());
        QCOMPARE(MoveDoneToNew(kasten.kartei.Karten(), 32767, {}), 2);
        zug.Commit();
        const FachTabelle gefunden = kasten.Gefunden();
        QCOMPARE(gefunden[0].Anzahl, 3);
        QCOMPARE(gefunden[0].LfdMax, 3);
        QCOMPARE(kasten.Letzte(0), 3.0);
    }

    void ABoxThatIsNotOpenHasItsWidthsAndNoCards()
    {
        Faecher faecher;
        QCOMPARE(faecher.size(), std::size_t(7));
        QCOMPARE(faecher[0].BreiteMax, 1750);
        faecher.Anhaengen(3);
        faecher.Leeren();
        for (const Fach &fach : faecher) {
            QCOMPARE(fach.Anzahl, 0);
            QCOMPARE(fach.LfdMax, 0);
        }
        QCOMPARE(faecher.at(5).Kapazitaet, 700);
    }

    // Anzahl is what a walk finds after every operation. LfdMax is never below what a walk finds, and the
    // same wherever a card has just come to the back or the file has been counted: a number that was handed
    // out is not handed out again before the next count.
    void AfterEveryOperationTheNumbersAreThoseOfTheFile_data()
    {
        QTest::addColumn<unsigned>("samen");
        for (unsigned samen = 1; samen <= 3; ++samen)
            QTest::addRow("seed %u", samen) << samen;
    }

    void AfterEveryOperationTheNumbersAreThoseOfTheFile()
    {
        QFETCH(unsigned, samen);
        std::mt19937 zufall(samen);
        const auto rnd = [&](int n) { return static_cast<int>(zufall() % static_cast<unsigned>(n)); };
        QList<CardRecord> karten;
        for (int i = 1; i <= 60; ++i) // some numbers are nearly used up, some begin below 0
            karten << MakeCard(i, i % 7, i % 7 == 2 ? 32000 + i : i % 7 == 1 ? 3 * i - 20 : i);
        karten << MakeCard(61, 1, 32765) << MakeCard(62, 0, 32760) << MakeCard(63, 2, 32766);
        Kasten kasten(karten);
        CardStore &kartei = kasten.kartei;
        int aufgerueckt = 0;
        for (int schritt = 0; schritt < 300; ++schritt) {
            const FachTabelle vorher = kartei.FachInfo;
            const int tun = rnd(100);
            const int fach = rnd(6);
            int wohin = -1; // a card has come to its back
            bool gezaehlt = false;
            if (tun < 70) {
                if (!kasten.Stehen(fach))
                    continue;
                const double gefragt = kartei.Felder().FrageNr.Number();
                wohin = KarteEinordnen(kartei, Gefragt(kartei), rnd(3) != 0);
                QCOMPARE(kasten.Letzte(wohin), gefragt);
            } else if (tun < 80) {
                if (!kasten.Stehen(fach))
                    continue;
                QVERIFY(KarteLoeschen(kartei).geloescht);
            } else if (tun < 92) {
                Importieren(kartei, 1 + rnd(5));
                wohin = FachNeu;
            } else if (tun < 94) {
                CardTransaction zug(kartei.Karten());
                rnd(2) == 0 ? MoveAllToNew(kartei.Karten())
                            : MoveDoneToNew(kartei.Karten(), kartei.FachInfo[FachNeu].LfdMax);
                zug.Commit();
                NeuZaehlen(kartei, Fehler::DatentraegerVoll);
                gezaehlt = true;
            } else if (tun < 97) {
                NeuZaehlen(kartei, Fehler::DatentraegerVoll);
                gezaehlt = true;
            } else {
                kasten.Oeffnen();
                gezaehlt = true;
            }
            const QByteArray was = "step " + QByteArray::number(schritt) + ", " + QByteArray::number(tun);
            const FachTabelle datei = kasten.Gefunden();
            for (std::size_t i = 0; i < datei.size(); ++i) {
                QVERIFY2(kartei.FachInfo[i].Anzahl == datei[i].Anzahl, was.constData());
                if (gezaehlt || static_cast<int>(i) == wohin)
                    QVERIFY2(kartei.FachInfo[i].LfdMax == datei[i].LfdMax, was.constData());
                else
                    QVERIFY2(kartei.FachInfo[i].LfdMax >= datei[i].LfdMax &&
                                 kartei.FachInfo[i].LfdMax == vorher[i].LfdMax,
                             was.constData());
            }
            if (wohin >= 0 && datei[static_cast<std::size_t>(wohin)].LfdMax <
                                  vorher[static_cast<std::size_t>(wohin)].LfdMax)
                ++aufgerueckt;
        }
        QVERIFY(aufgerueckt >= 1);
        QVERIFY(kartei.IsOpen());
    }

    void ANumberThatWasHandedOutIsNotHandedOutAgain()
    {
        Kasten kasten({MakeCard(1, 0, 1), MakeCard(2, 0, 7)});
        kasten.kartei.Karten().MoveLast();
        QVERIFY(KarteLoeschen(kasten.kartei).geloescht);
        QCOMPARE(kasten.kartei.FachInfo[0].LfdMax, 7);
        Importieren(kasten.kartei, 1);
        QCOMPARE(kasten.Gefunden()[0].LfdMax, 8);
    }

    void AFullCompartmentTakesNoCardAndStaysAsItWas()
    {
        Faecher faecher;
        for (int i = 0; i < 32767; ++i)
            faecher.Anhaengen(4);
        QVERIFY(faecher.Verbraucht(4));
        QVERIFY_EXCEPTION_THROWN(faecher.Anhaengen(4), StoreError);
        faecher.Aufgerueckt(4, 5); // as if its numbers had begun below 0
        QVERIFY_EXCEPTION_THROWN(faecher.Anhaengen(4), StoreError);
        QCOMPARE(faecher[4].Anzahl, 32767);
        QCOMPARE(faecher[4].LfdMax, 5);
    }

    void AWalkThatFailsLeavesNothingCounted()
    {
        Kasten kasten({MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        kasten.kartei.Karten().Past([](SQLite::Database &database) {
            database.exec("UPDATE Lernkarten SET FachNr=9 WHERE FrageNr=2");
        });
        Faecher faecher;
        faecher.Anhaengen(5);
        try {
            faecher.Zaehlen(kasten.kartei.Karten());
            QFAIL("counted a card of no compartment");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::IndexAusserhalb);
        }
        for (const Fach &fach : faecher)
            QVERIFY(fach.Anzahl == 0 && fach.LfdMax == 0);
    }

    void WhatIsNoNumberOfACardIsToldWhereverItStands_data()
    {
        QTest::addColumn<QString>("zuweisung");
        QTest::addColumn<int>("nummer");
        QTest::newRow("a text") << "FrageNr='x'" << int(Fehler::TypUnvertraeglich);
        QTest::newRow("nothing") << "FrageNr=NULL" << int(Fehler::NullUngueltig);
        QTest::newRow("too large") << "FrageNr=40000" << int(Fehler::Ueberlauf);
        QTest::newRow("too small") << "FrageNr=-40000" << int(Fehler::Ueberlauf);
        QTest::newRow("a place that is a text") << "FachLfdNr='x'" << int(Fehler::TypUnvertraeglich);
        QTest::newRow("a place that is too large") << "FachLfdNr=40000" << int(Fehler::Ueberlauf);
        QTest::newRow("half a compartment") << "FachNr=2.5" << int(Fehler::IndexAusserhalb);
    }

    void WhatIsNoNumberOfACardIsToldWhereverItStands()
    {
        QFETCH(QString, zuweisung);
        QFETCH(int, nummer);
        Kasten kasten({MakeCard(1, 0, 1), MakeCard(2, 3, 1), MakeCard(3, 6, 1)});
        kasten.kartei.Karten().Past([&](SQLite::Database &database) {
            database.exec(("UPDATE Lernkarten SET " + zuweisung + " WHERE FrageNr=2").toStdString());
        });
        Faecher faecher;
        try {
            faecher.Zaehlen(kasten.kartei.Karten());
            QFAIL("counted a card that is none");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), nummer);
        }
    }

    void TheLastCardIsCountedWithOrWithoutTheDoneOnes()
    {
        Faecher faecher;
        QVERIFY(!IstLetzteKarte(faecher, Erledigte::Zaehlen));
        faecher.Anhaengen(2);
        QVERIFY(IstLetzteKarte(faecher, Erledigte::Zaehlen));
        faecher.Anhaengen(FachErledigt);
        QVERIFY(!IstLetzteKarte(faecher, Erledigte::Zaehlen));
        QVERIFY(IstLetzteKarte(faecher, Erledigte::ZaehlenNicht));
        faecher.Entnehmen(2);
        QVERIFY(IstLetzteKarte(faecher, Erledigte::Zaehlen));
        QVERIFY(!IstLetzteKarte(faecher, Erledigte::ZaehlenNicht));
    }

    void ADeletionThatFailsLeavesCardAndCount()
    {
        Kasten kasten({MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        QVERIFY(kasten.Stehen(3));
        QVERIFY(QFile::remove(kasten.verzeichnis.filePath("box.pzb")));
        const Loeschung loeschung = KarteLoeschen(kasten.kartei);
        QVERIFY(!loeschung.geloescht);
        QVERIFY(loeschung.fehler);
        QCOMPARE(loeschung.fehler->Number(), Fehler::KarteiNichtGefunden);
        QCOMPARE(kasten.kartei.FachInfo[3].Anzahl, 1);
    }
};

PAUKFIX_CORE_TEST(FaecherTest)
#include "FaecherTest.moc"
