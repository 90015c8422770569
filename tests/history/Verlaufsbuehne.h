// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KarteEinordnen.h"
#include "Oeffnung.h"
#include "StoreTestSupport.h"
#include "Verlaufsbuch.h"

#include <QTest>

#include <memory>

namespace paukfix {

// A learner without windows: opens boxes, answers their cards, and has a history kept of it.
class Verlaufsbuehne
{
public:
    Verlaufsbuehne() { Starten(); }

    QString Pfad(const QString &name) const { return ordner.filePath(name); }

    QString Verlaufspfad() const { return Pfad("daten/verlauf.sqlite"); }

    // Twenty cards, whose questions begin with `wort`.
    void Anlegen(const QString &name, int karten = 20, const QString &wort = "Wort") const
    {
        QList<CardRecord> alle;
        for (int nummer = 1; nummer <= karten; ++nummer) {
            alle << MakeCard(nummer, 0, nummer);
            alle.last().Frage_Klartext = QString("%1 %2").arg(wort).arg(nummer);
        }
        MakeCardFile(Pfad(name), alle);
    }

    // The program starts, and keeps its history at Verlaufspfad().
    void Starten()
    {
        QDir(ordner.path()).mkpath("daten");
        kartei.KarteiPfad = ordner.path();
        buch = std::make_unique<Verlaufsbuch>(kartei, clock, Verlaufspfad());
    }

    void Beenden()
    {
        buch.reset();
        kartei.CloseCardFile();
    }

    void Oeffnen(const QString &name)
    {
        clock.jetzt = clock.jetzt.addSecs(1); // opening takes its time
        const auto oeffnung = paukfix::Oeffnen(kartei, name, clock);
        QVERIFY(oeffnung.ausgang == Oeffnung::Ausgang::Offen);
        buch->Nachsehen();
    }

    // The first card in the order of the box.
    void Antworten(bool richtig)
    {
        kartei.Karten().MoveFirst();
        KarteEinordnen(kartei, Gefragt(kartei), richtig);
        buch->Nachsehen();
    }

    // What was done last.
    void Zuruecknehmen()
    {
        kartei.schritte.Zuruecknehmen();
        buch->Nachsehen();
    }

    std::vector<Tagesstand> Tage() const { return buch->Lesen().stand.tage; }

    QTemporaryDir ordner;
    TestClock clock;
    TestMeldungen meldungen;
    CardStore kartei;
    std::unique_ptr<Verlaufsbuch> buch;
};

} // namespace paukfix
