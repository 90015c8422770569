// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QRegularExpression>

using namespace paukfix;

// The built program's query in its real window: where it stands, and a key that is held down in it.
class AbfragefensterTest : public Laufbuehne
{
    Q_OBJECT

private:
    const QString box_ = "Lern-Box", abfrage_ = "Merkkasten Abfrage";

    QByteArray Konfig() const
    {
        QFile datei(Pfad("konfig.dat"));
        return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
    }

    void Starten(Lauf &lauf) const
    {
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
    }

    void Beenden(Lauf &lauf) const
    {
        QVERIFY(anzeige_->Taste(box_, "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    // Asks a card, looks where its window is, and answers.
    QString LageDerNaechsten() const
    {
        QString lage;
        if (anzeige_->Taste(box_, "n"))
            lage = anzeige_->Lage(abfrage_);
        for (const char *taste : {"x", "Return", "Return"})
            if (!anzeige_->Taste(abfrage_, taste))
                return {};
        return lage;
    }

private slots:

    void init()
    {
        Aufbauen(Vorspann::Nein);
        QList<CardRecord> karten;
        for (int i = 1; i <= 20; ++i)
            karten << MakeCard(i, 0, i);
        MakeCardFile(Pfad("a.pzb"), karten);
    }

    void TheQueryStaysWhereTheLearnerPutsIt()
    {
        QString lage;
        {
            Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
            Starten(lauf);
            QVERIFY(anzeige_->Taste(box_, "n"));
            QVERIFY(anzeige_->Versetzen(abfrage_, {61, 47}, {1010, 765}));
            lage = anzeige_->Lage(abfrage_);
            QVERIFY2(lage.contains("1010x765"), qPrintable(lage));
            for (const char *taste : {"x", "Return", "Return"})
                QVERIFY(anzeige_->Taste(abfrage_, taste));
            QTRY_VERIFY(Konfig().contains("[Fenster]\r\nAbfragePlatz=61;"));
            const QByteArray konfig = Konfig();
            for (int karte = 0; karte < 2; ++karte) // and does not creep
                QCOMPARE(LageDerNaechsten(), lage);
            QCOMPARE(Konfig(), konfig);
            Beenden(lauf);
        }
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        for (int karte = 0; karte < 2; ++karte)
            QCOMPARE(LageDerNaechsten(), lage);
        Beenden(lauf);
    }

    void AQueryThatNobodyMovesWritesNothing()
    {
        const QByteArray vorher = Konfig();
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        const QString lage = LageDerNaechsten();
        for (int karte = 0; karte < 3; ++karte)
            QCOMPARE(LageDerNaechsten(), lage);
        Beenden(lauf);
        QCOMPARE(Konfig(), vorher);
        QVERIFY(!QFile::exists(Pfad("konfig.new")));
    }

    // A window manager reads it anew for each card.
    void TheQueryBringsNoLargeIcon()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        QTRY_VERIFY(anzeige_->Eigenschaft(box_, "_NET_WM_ICON").contains("(128 x 128)"));
        QVERIFY(anzeige_->Taste(box_, "n"));
        const QString bild = anzeige_->Eigenschaft(abfrage_, "_NET_WM_ICON");
        QVERIFY2(bild.contains("(16 x 16)") && bild.contains("(48 x 48)"), qPrintable(bild.left(300)));
        QVERIFY(!bild.contains("(64 x 64)") && !bild.contains("(128 x 128)"));
        for (const char *taste : {"x", "Return", "Return"})
            QVERIFY(anzeige_->Taste(abfrage_, taste));
        Beenden(lauf);
    }

    // Every start would wait for it.
    void WhatFewSessionsNeedIsNotLoadedBefore()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        QVERIFY(anzeige_->WarteAuf(box_));
        QFile karte(u"/proc/%1/maps"_s.arg(lauf.prozess.processId()));
        QVERIFY(karte.open(QIODevice::ReadOnly));
        const QByteArray geladen = karte.readAll();
        QVERIFY(geladen.contains("/libsqlite3.so"));
        for (const char *name : {"/libzip.so", "/libsndfile.so", "/libcrypto.so"})
            QVERIFY2(!geladen.contains(name), name);
        Beenden(lauf);
    }

    void SettingsThatMayNotBeWrittenAreToldOnce()
    {
        QVERIFY(QFile::setPermissions(Pfad("konfig.dat"), QFile::ReadOwner | QFile::ReadGroup));
        const QByteArray vorher = Konfig();
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        QString lage;
        for (int karte = 0; karte < 3; ++karte) {
            QVERIFY(anzeige_->Taste(box_, "n"));
            QVERIFY(anzeige_->Versetzen(abfrage_, {61 + karte, 47}, {1010, 765 - karte}));
            lage = anzeige_->Lage(abfrage_);
            for (const char *taste : {"x", "Return", "Return"})
                QVERIFY(anzeige_->Taste(abfrage_, taste));
            if (karte == 0)
                QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        }
        QCOMPARE(LageDerNaechsten(), lage); // it holds for this run
        Beenden(lauf);
        QCOMPARE(Konfig(), vorher);
    }

    // The server repeats the key; what another program sees of it tells how often.
    void ADigitThatIsHeldTicksOnce()
    {
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Antworttyp = 2;
        karte.Antwort_ch_1 = karte.Antwort_ch_2 = karte.Antwort_ch_3 = karte.Antwort_ch_4 =
            karte.Antwort_ch_5 = true;
        QVERIFY(QFile::remove(Pfad("a.pzb")));
        MakeCardFile(Pfad("a.pzb"), {karte, MakeCard(2, 0, 2)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        Starten(lauf);
        QVERIFY(anzeige_->Taste(box_, "n"));
        for (const char *taste : {"2", "3", "4", "5"})
            QVERIFY(anzeige_->Taste(abfrage_, taste));

        // As often as it takes for presses and repeats to make another tick than presses alone.
        int gehalten = 0;
        qsizetype gesehen = 0;
        while ((gesehen - gehalten) % 2 == 0) {
            QVERIFY(gehalten < 20);
            const qsizetype mal = anzeige_->Halten(abfrage_, "1", 4);
            QVERIFY(mal >= 4);
            gesehen += mal;
            ++gehalten;
        }
        QVERIFY(anzeige_->Taste(abfrage_, "Return"));
        QVERIFY(anzeige_->WarteAufFarbe(gehalten % 2 == 1 ? "#00FF00" : "#FF0000"));
        QVERIFY(anzeige_->Taste(abfrage_, "Return"));
        Beenden(lauf);
    }
};

PAUKFIX_CORE_TEST(AbfragefensterTest)
#include "AbfragefensterTest.moc"
