// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenflug.h"

#include "Bewegungstakt.h"
#include "Eingabewache.h"
#include "Farben.h"
#include "Kartenrahmen.h"
#include "Kasten.h"

namespace paukfix {

namespace {

constexpr int Flugdauer = 360, Flugpause = 15; // milliseconds

} // namespace

void Kartenflug::Legen(const QString &frageNr)
{
    kasten_.Karte().Legen(frageNr, FlugLinks, FlugOben);
}

void Kartenflug::KarteAnimieren(int von, int ziel, bool richtig)
{
    if (!Fliegt())
        return;
    Kartenrahmen &karte = kasten_.Karte();
    const QPoint start = kasten_.Vorderste(von);
    kasten_.SetUnterwegs(von);
    karte.SetFarbe(richtig ? Farben::Richtig : Farben::Falsch);
    const Bewegungstakt takt(verzoegerung_, Flugdauer, Flugpause);
    for (int schritt = 1; schritt <= takt.Schritte() && !takt.IstUm() && !eingabe_.Unterbrochen();
         ++schritt) {
        karte.Fliegen(start, ziel, double(schritt) / takt.Schritte());
        takt.Pause();
    }
}

void Kartenflug::Verbergen()
{
    kasten_.Karte().hide();
    kasten_.SetUnterwegs(-1);
}

} // namespace paukfix
