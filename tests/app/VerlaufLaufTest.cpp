// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDate>
#include <QTest>
#include <SQLiteCpp/Database.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The whole program in its window: what it learns is in its history.
class VerlaufLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    QString kartei_;

    void Antworten(const QString &antwort)
    {
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Tasten("Merkkasten Abfrage", {antwort, "Return", "Return"}));
    }

    // Right and wrong answers of today.
    QPair<int, int> Gezaehlt() const
    {
        SQLite::Database datei(Pfad("verlauf.sqlite").toStdString());
        SQLite::Statement lesen(datei, "SELECT richtig, falsch FROM tag WHERE tag=?1");
        lesen.bind(1, QDate::currentDate().toString(Qt::ISODate).toStdString());
        return lesen.executeStep() ? qMakePair(lesen.getColumn(0).getInt(), lesen.getColumn(1).getInt())
                                   : qMakePair(-1, -1);
    }

private slots:

    void init()
    {
        Aufbauen(Vorspann::Nein);
        kartei_ = Pfad("a.pzb");
        QList<CardRecord> karten;
        for (int i = 1; i <= 10; ++i) {
            karten << MakeCard(i, 0, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = u"j"_s;
        }
        MakeCardFile(kartei_, karten);
    }

    void WhatIsLearnedIsInTheHistory()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
        Antworten("j");
        Antworten("x");
        Antworten("j");
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+z"));
        QVERIFY(anzeige_->Tasten("Lern-Box", {"alt+e", "v"}));
        QVERIFY(anzeige_->WarteAuf("Verlauf"));
        QCOMPARE(Gezaehlt(), qMakePair(1, 1)); // written before it is shown
        QVERIFY(anzeige_->Schliessen("Verlauf", "Return"));
        Antworten("j");
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(Gezaehlt(), qMakePair(2, 1));
    }

    // Nobody hears of it before he looks.
    void LearningDoesNotDependOnIt()
    {
        QVERIFY(QDir().mkpath(Pfad("verlauf.sqlite")));
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
        Antworten("j");
        QVERIFY(anzeige_->Tasten("Lern-Box", {"alt+e", "v"}));
        QVERIFY(anzeige_->Schliessen("Verlauf", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(ReadCards(kartei_).last().FachNr, 2);
    }
};

PAUKFIX_TEST(VerlaufLaufTest)
#include "VerlaufLaufTest.moc"
