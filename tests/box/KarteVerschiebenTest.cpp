// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteVerschieben.h"

#include "BoxRechnung.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"
#include "Wuerfel.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>

using namespace paukfix;

namespace {

// A card file on disk, opened by a store of its own.
struct Kartei
{
    explicit Kartei(const QList<CardRecord> &karten)
    {
        pfad = verzeichnis.filePath("box.pzb");
        MakeCardFile(pfad, karten);
        clock.perSecond = 1;
        store.KarteiPfad = verzeichnis.path();
        QString name = "box.pzb";
        oeffner.OpenCardFile(name);
        if (name.isEmpty())
            qFatal("the card file does not open: %s", qPrintable(meldungen.Texte().join(u' ')));
    }

    // What lies on disk: (FrageNr, FachNr, FachLfdNr), in box order. Closes the store's file.
    QList<QList<int>> Gespeichert()
    {
        store.CloseCardFile();
        QList<QList<int>> gelesen;
        for (const CardRecord &karte : ReadCards(pfad))
            gelesen.append({int(karte.FrageNr), int(karte.FachNr), int(karte.FachLfdNr)});
        return gelesen;
    }

    void Stehen(int fach) { QVERIFY(ErsteKarte(store.Karten(), fach)); }

    QTemporaryDir verzeichnis;
    QString pfad;
    TestMeldungen meldungen;
    TestClock clock;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
};

} // namespace

class KarteVerschiebenTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void init() { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); }

    void EveryMoveOfTheTable_data()
    {
        QTest::addColumn<int>("von");
        QTest::addColumn<bool>("richtig");
        QTest::addColumn<int>("nach");
        const std::array<int, 6> ziele{2, 2, 3, 4, 5, 6};
        for (int von = 0; von < 6; ++von) {
            QTest::addRow("%d right", von) << von << true << ziele[static_cast<std::size_t>(von)];
            QTest::addRow("%d wrong", von) << von << false << 1;
        }
    }

    void EveryMoveOfTheTable()
    {
        QFETCH(int, von);
        QFETCH(bool, richtig);
        QFETCH(int, nach);
        QList<CardRecord> karten;
        for (int fach = 0; fach <= 6; ++fach)
            karten << MakeCard(10 * fach + 1, fach, 4) << MakeCard(10 * fach + 2, fach, 9);
        Kartei kartei(karten);
        kartei.Stehen(von);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), richtig);

        const auto &fach = kartei.store.FachInfo;
        const auto an = [](int i) { return static_cast<std::size_t>(i); };
        QCOMPARE(fach[an(von)].Anzahl, von == nach ? 2 : 1);
        QCOMPARE(fach[an(nach)].Anzahl, von == nach ? 2 : 3);
        QCOMPARE(fach[an(nach)].LfdMax, 10);
        QCOMPARE(kartei.store.sitzung.RichtigZaehler(), richtig ? 1 : 0);
        QCOMPARE(kartei.store.sitzung.FalschZaehler(), richtig ? 0 : 1);
        QCOMPARE(kartei.meldungen.gezeigt.size(), nach == 6 ? 1 : 0);
        const QList<QList<int>> gespeichert = kartei.Gespeichert();
        QVERIFY(gespeichert.contains({10 * von + 1, nach, 10}));
        QCOMPARE(gespeichert.size(), karten.size());
        // Every other card is where it was.
        for (const CardRecord &karte : karten)
            if (karte.FrageNr != 10 * von + 1)
                QVERIFY(gespeichert.contains({int(karte.FrageNr), int(karte.FachNr), int(karte.FachLfdNr)}));
    }

    void DoneCardIsCongratulatedOn()
    {
        Kartei kartei({MakeCard(1, 5, 1)});
        kartei.Stehen(5);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        QCOMPARE(kartei.meldungen.Texte(),
                 QStringList{"Sehr gut!\nDiese Frage beherrschen Sie.\nDie Frage ist vorerst erledigt"});
        QCOMPARE(kartei.meldungen.gezeigt[0].symbol, Meldungen::Symbol::Ausruf);
    }

    void MovedCardIsAskedLast()
    {
        Kartei kartei({MakeCard(1, 1, 1), MakeCard(2, 1, 2), MakeCard(3, 1, 3)});
        QList<int> gefragt;
        for (int i = 0; i < 6; ++i) {
            kartei.Stehen(1);
            gefragt << kartei.store.Felder().FrageNr.Integer();
            KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        }
        QCOMPARE(gefragt, (QList<int>{1, 2, 3, 1, 2, 3}));
    }

    void CountersStopInsteadOfOverflowing()
    {
        Kartei kartei({MakeCard(1, 1, 1)});
        for (int i = 0; i < 32767; ++i) {
            kartei.store.sitzung.Zaehlen(true);
            kartei.store.sitzung.Zaehlen(false);
        }
        kartei.Stehen(1);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        kartei.Stehen(1);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        QCOMPARE(kartei.store.sitzung.RichtigZaehler(), 32767);
        QCOMPARE(kartei.store.sitzung.FalschZaehler(), 32767);
    }

    void UsedUpRunningNumbersAreClosedUp()
    {
        Kartei kartei({MakeCard(1, 0, 1), MakeCard(2, 2, 5), MakeCard(3, 2, 17), MakeCard(4, 2, 32767),
                       MakeCard(5, 3, 8)});
        kartei.Stehen(0);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        QCOMPARE(kartei.store.FachInfo[2].LfdMax, 4);
        QCOMPARE(kartei.store.FachInfo[2].Anzahl, 4);
        QCOMPARE(kartei.Gespeichert(),
                 (QList<QList<int>>{{2, 2, 1}, {3, 2, 2}, {4, 2, 3}, {1, 2, 4}, {5, 3, 8}}));
    }

    void DoneCardsCloseUpToo()
    {
        Kartei kartei({MakeCard(1, 5, 1), MakeCard(2, 6, 32767), MakeCard(3, 6, 12)});
        kartei.Stehen(5);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        QCOMPARE(kartei.store.FachInfo[6].LfdMax, 3);
        QCOMPARE(kartei.Gespeichert(), (QList<QList<int>>{{3, 6, 1}, {2, 6, 2}, {1, 6, 3}}));
    }

    // A wrong answer in compartment 1 uses up its numbers on its own.
    void ClosingUpLeavesTheAskedCardLast()
    {
        Kartei kartei({MakeCard(1, 1, 100), MakeCard(2, 1, 200), MakeCard(3, 1, 32767)});
        kartei.Stehen(1);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        QCOMPARE(kartei.store.FachInfo[1].LfdMax, 3);
        kartei.Stehen(1);
        QCOMPARE(kartei.store.Felder().FrageNr.Integer(), 2);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        QCOMPARE(kartei.Gespeichert(), (QList<QList<int>>{{3, 1, 2}, {1, 1, 3}, {2, 1, 4}}));
    }

    void ClosingUpKeepsTheOrderOfNegativeNumbers()
    {
        Kartei kartei({MakeCard(1, 0, 1), MakeCard(2, 1, -7), MakeCard(3, 1, 1), MakeCard(4, 1, 32767)});
        kartei.Stehen(0);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        QCOMPARE(kartei.Gespeichert(), (QList<QList<int>>{{2, 1, 1}, {3, 1, 2}, {4, 1, 3}, {1, 1, 4}}));
    }

    void AFullCompartmentIsClosedUpInOneTransaction()
    {
        QList<CardRecord> karten;
        for (int i = 1; i <= 300; ++i)
            karten << MakeCard(i, 1, 32767 - 3 * (300 - i));
        Kartei kartei(karten);
        kartei.Stehen(1);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
        const QList<QList<int>> gespeichert = kartei.Gespeichert();
        for (int i = 0; i < 299; ++i)
            QCOMPARE(gespeichert[i], (QList<int>{i + 2, 1, i + 1}));
        QCOMPARE(gespeichert[299], (QList<int>{1, 1, 300}));
    }

    void WhatAFullDiskDoesNotTakeIsNotCounted()
    {
        Kartei kartei({MakeCard(1, 0, 1), MakeCard(2, 2, 5)});
        kartei.Stehen(0);
        VollePlatte::Setzen(VollePlatte::Zustand::Voll);
        QVERIFY_EXCEPTION_THROWN(
            KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true), StoreError);
        QCOMPARE(kartei.store.FachInfo[0].Anzahl, 1);
        QCOMPARE(kartei.store.FachInfo[2].Anzahl, 1);
        QCOMPARE(kartei.store.FachInfo[2].LfdMax, 5);
        QCOMPARE(kartei.store.sitzung.RichtigZaehler(), 0);

        NeuZaehlen(kartei.store, Fehler::DatentraegerVoll);
        QVERIFY(kartei.store.IsOpen());
        QCOMPARE(kartei.store.FachInfo[0].Anzahl, 1);
        QCOMPARE(kartei.store.FachInfo[2].LfdMax, 5);

        // With room again, the same card goes its way.
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        kartei.Stehen(0);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        QCOMPARE(kartei.Gespeichert(), (QList<QList<int>>{{2, 2, 5}, {1, 2, 6}}));
    }

    void AFullDiskWhileClosingUpLeavesAllAsItWas()
    {
        Kartei kartei({MakeCard(1, 1, 100), MakeCard(2, 1, 200), MakeCard(3, 1, 32767)});
        kartei.Stehen(1);
        VollePlatte::Setzen(VollePlatte::Zustand::Voll);
        QVERIFY_EXCEPTION_THROWN(
            KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false), StoreError);
        NeuZaehlen(kartei.store, Fehler::DatentraegerVoll);
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(kartei.store.FachInfo[1].LfdMax, 32767);
        QCOMPARE(kartei.Gespeichert(), (QList<QList<int>>{{1, 1, 100}, {2, 1, 200}, {3, 1, 32767}}));
    }

    void AFileThatWasTakenAwayIsClosed_data()
    {
        QTest::addColumn<bool>("geloescht");
        QTest::addColumn<bool>("ersetzt");
        QTest::addColumn<int>("lfdMax"); // at its highest value the compartment is closed up
        for (const int lfdMax : {5, 32767}) {
            QTest::addRow("deleted, %d", lfdMax) << true << false << lfdMax;
            QTest::addRow("renamed, %d", lfdMax) << false << false << lfdMax;
            QTest::addRow("deleted and replaced, %d", lfdMax) << true << true << lfdMax;
            QTest::addRow("renamed and replaced, %d", lfdMax) << false << true << lfdMax;
        }
    }

    void AFileThatWasTakenAwayIsClosed()
    {
        QFETCH(bool, geloescht);
        QFETCH(bool, ersetzt);
        QFETCH(int, lfdMax);
        const QList<CardRecord> karten{MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 1, lfdMax)};
        const QList<CardRecord> andere{MakeCard(7, 4, 1)};
        Kartei kartei(karten);
        kartei.Stehen(0);
        KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), true);
        const QString weg = kartei.pfad + ".weg";
        QVERIFY(geloescht ? QFile::remove(kartei.pfad) : QFile::rename(kartei.pfad, weg));
        if (ersetzt)
            MakeCardFile(kartei.pfad, andere);
        const QStringList dateien = QDir(kartei.verzeichnis.path()).entryList(QDir::Files);
        try {
            kartei.Stehen(0);
            KarteVerschieben(kartei.store, kartei.meldungen, Gefragt(kartei.store), false);
            QFAIL("stored in a file that is not there");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::KarteiNichtGefunden);
            QCOMPARE(fehler.Text(), QString("Die Datei „%1“ wurde gelöscht, umbenannt oder ersetzt, während "
                                            "sie offen war.")
                                        .arg(kartei.pfad));
            QCOMPARE(QDir(kartei.verzeichnis.path()).entryList(QDir::Files), dateien);
            NeuZaehlen(kartei.store, fehler.Number());
        }
        QVERIFY(!kartei.store.IsOpen());
        QCOMPARE(kartei.store.FehlerStatus, Fehler::KarteiNichtGefunden);
        for (const Fach &fach : kartei.store.FachInfo)
            QCOMPARE(fach.Anzahl, 0);
        // What was answered before is where it went, and what stands in its place is not touched.
        if (ersetzt)
            QCOMPARE(ReadCards(kartei.pfad), andere);
        if (!geloescht) {
            QCOMPARE(FaultIn(weg), QString());
            const QList<CardRecord> gelesen = ReadCards(weg);
            QCOMPARE(gelesen.size(), karten.size());
            QVERIFY(std::any_of(gelesen.begin(), gelesen.end(), [](const CardRecord &karte) {
                return karte.FrageNr == 1 && karte.FachNr == 2;
            }));
        }
    }

    void TheDieNeverDrawsTheLastOfSeveral_data()
    {
        QTest::addColumn<int>("karten");
        QTest::addColumn<double>("rnd");
        QTest::addColumn<int>("gezogen");
        QTest::newRow("one card") << 1 << 0.99 << 1;
        QTest::newRow("two cards, low") << 2 << 0.0 << 1;
        QTest::newRow("two cards, high") << 2 << 0.9999 << 1;
        QTest::newRow("three cards, high") << 3 << 0.9999 << 2;
        QTest::newRow("ten cards, middle") << 10 << 0.5 << 5;
        QTest::newRow("ten cards, high") << 10 << 0.9999 << 9;
    }

    void TheDieNeverDrawsTheLastOfSeveral()
    {
        QFETCH(int, karten);
        QFETCH(double, rnd);
        QFETCH(int, gezogen);

        struct EineZahl final : Zufall
        {
            explicit EineZahl(double z) : zahl(z) {}

            double Rnd() override { return zahl; }

            double zahl;
        } zufall(rnd);

        QList<CardRecord> alle{MakeCard(100, 2, 1), MakeCard(101, 4, 1)};
        for (int i = 1; i <= karten; ++i)
            alle << MakeCard(i, 3, 10 * i);
        Kartei kartei(alle);
        QVERIFY(ZufaelligeKarte(kartei.store.Karten(), 3, karten, zufall));
        QCOMPARE(kartei.store.Felder().FrageNr.Integer(), gezogen);
        QCOMPARE(kartei.store.Felder().FachNr.Integer(), 3);
    }

    void AnEmptyCompartmentHasNoFirstCard()
    {
        Kartei kartei({MakeCard(1, 0, 1), MakeCard(2, 4, 1)});
        QVERIFY(!ErsteKarte(kartei.store.Karten(), 3));
        QVERIFY(!ErsteKarte(kartei.store.Karten(), 5));
        QVERIFY(ErsteKarte(kartei.store.Karten(), 4));
        QCOMPARE(kartei.store.Felder().FrageNr.Integer(), 2);
    }
};

PAUKFIX_CORE_TEST(KarteVerschiebenTest)
#include "KarteVerschiebenTest.moc"
