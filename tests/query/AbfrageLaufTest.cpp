// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageLauf.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

using Stand = AbfrageLauf::Stand;

// A card from its question to what the query leaves behind, without a window.
class AbfrageLaufTest : public QObject
{
    Q_OBJECT

private:
    static Abfragekarte Karte(Antworttyp typ)
    {
        Abfragekarte karte;
        karte.typ = typ;
        karte.Antwort_1_Klartext = "ja";
        karte.Antwort_ch = {true, false, false, false, true};
        for (std::size_t slot = 1; slot < karte.Medium.size(); ++slot)
            karte.Medium[slot] = QString("m%1").arg(slot);
        return karte;
    }

private slots:

    void NothingIsLeftBeforeAVerdict()
    {
        AbfrageLauf lauf(Karte(Antworttyp::Getippt));
        QVERIFY(lauf.Wo() == Stand::Gefragt);
        QVERIFY(!lauf.Ergebnis());
        QVERIFY(lauf.Pruefen(QString("ja")) == true);
        QVERIFY(lauf.Wo() == Stand::Geprueft);
        QVERIFY(!lauf.Ergebnis());
        lauf.Urteilen(true);
        QVERIFY(lauf.Wo() == Stand::Beurteilt);
        QVERIFY(lauf.Ergebnis() == AbfrageErgebnis::Richtig);
    }

    void WhatWasAnsweredIsJudgedByItsKind()
    {
        QVERIFY(AbfrageLauf(Karte(Antworttyp::Getippt)).Pruefen(QString("nein")) == false);
        QVERIFY(AbfrageLauf(Karte(Antworttyp::Ankreuzen)).Pruefen(Kreuze{true, false, false, false, true}) ==
                true);
        QVERIFY(AbfrageLauf(Karte(Antworttyp::Ankreuzen)).Pruefen(Kreuze{true}) == false);
        QVERIFY(!AbfrageLauf(Karte(Antworttyp::Keiner)).Pruefen({}));
    }

    void TheLastVerdictCounts()
    {
        AbfrageLauf lauf(Karte(Antworttyp::Keiner));
        lauf.Pruefen({});
        lauf.Urteilen(true);
        lauf.Urteilen(false);
        QVERIFY(lauf.Ergebnis() == AbfrageErgebnis::Falsch);
        lauf.Beenden(AbfrageErgebnis::Bearbeiten);
        QVERIFY(lauf.Ergebnis() == AbfrageErgebnis::Bearbeiten);
    }

    void PictureAndSoundBelongToTheMoment()
    {
        AbfrageLauf lauf(Karte(Antworttyp::Getippt));
        QCOMPARE(lauf.Bild() + lauf.Klang(), "m1m6");
        lauf.Pruefen(QString("ja"));
        QCOMPARE(lauf.Bild() + lauf.Klang(), "m1m6");
        lauf.Urteilen(true);
        QCOMPARE(lauf.Bild() + lauf.Klang(), "m2m7");
        lauf.Urteilen(false);
        QCOMPARE(lauf.Bild() + lauf.Klang(), "m3m8");
    }

    // What is handed over for good is just these numbers.
    void TheOutcomesHaveTheirNumbers()
    {
        QCOMPARE(static_cast<qint16>(AbfrageErgebnis::Richtig), qint16(-1));
        QCOMPARE(static_cast<qint16>(AbfrageErgebnis::Falsch), qint16(0));
        QCOMPARE(static_cast<qint16>(AbfrageErgebnis::Bearbeiten), qint16(10));
        QCOMPARE(static_cast<qint16>(AbfrageErgebnis::Geloescht), qint16(11));
    }
};

PAUKFIX_APPLESS_TEST(AbfrageLaufTest)
#include "AbfrageLaufTest.moc"
