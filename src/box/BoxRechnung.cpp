// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"

#include <algorithm>

namespace paukfix {

BoxBild BoxRechnen(const FachTabelle &tabelle)
{
    BoxBild bild;
    double hoechste = 0;
    for (std::size_t i = 1; i < FachSichtbar; ++i) {
        const Fach &fach = tabelle[i];
        bild.balken[i] = fach.Anzahl > 0;
        const double fuellung = fach.Anzahl < 1 ? 0 : double(fach.Anzahl) / fach.Kapazitaet;
        // Capped before it is rounded: the width of a crammed compartment does not fit into 16 bits.
        bild.Breite[i] = Runden16(std::min(fuellung * fach.BreiteMax, double(fach.BreiteMax)));
        if (fuellung > hoechste) {
            hoechste = fuellung;
            bild.VollstesFach = static_cast<qint16>(i);
        }
    }
    return bild;
}

bool IstLeer(const FachTabelle &tabelle)
{
    return std::all_of(tabelle.begin(), tabelle.end(), [](const Fach &fach) { return fach.Anzahl == 0; });
}

bool UeberKapazitaet(const Fach &fach)
{
    return fach.Anzahl > fach.Kapazitaet;
}

std::optional<int> ZuVollesFach(const FachTabelle &tabelle, int fach)
{
    const auto zuVoll = [&tabelle](int i) {
        return UeberKapazitaet(tabelle.at(static_cast<std::size_t>(i)));
    };
    if (fach < 5 && zuVoll(fach + 1))
        return fach + 1;
    if (fach != FachFalsch && zuVoll(FachFalsch))
        return FachFalsch;
    if (fach == FachNeu && zuVoll(2))
        return 2;
    return std::nullopt;
}

bool ErsteKarte(CardRecordset &karten, int fach)
{
    karten.SetIndex(u"BoxKey");
    karten.Seek(CardRecordset::Comparison::AtLeast, fach);
    return !karten.NoMatch() && karten[u"FachNr"].Number() == fach;
}

} // namespace paukfix
