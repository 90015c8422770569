// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenflug.h"

#include "Bewegungstakt.h"
#include "Eingabewache.h"
#include "Farben.h"
#include "Kartenrahmen.h"

namespace paukfix {

namespace {

constexpr int Flugdauer = 300, Flugpause = 15; // milliseconds

} // namespace

void Kartenflug::Legen(const QString &frageNr)
{
    karte_.Legen(frageNr, FlugLinks, FlugOben);
}

void Kartenflug::KarteAnimieren(int ziel, bool richtig)
{
    if (!konfig_.Animation)
        return;
    karte_.SetFarbe(richtig ? Farben::Richtig : Farben::Falsch);
    karte_.repaint();
    const Bewegungstakt takt(verzoegerung_, Flugdauer, Flugpause);
    for (int schritt = 1; schritt <= takt.Schritte() && !takt.IstUm() && !eingabe_.Unterbrochen();
         ++schritt) {
        karte_.Fliegen(ziel, double(schritt) / takt.Schritte());
        takt.Pause();
    }
}

void Kartenflug::Verbergen()
{
    karte_.hide();
}

} // namespace paukfix
