// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wuerfel.h"

namespace paukfix {

int KartenImSpiel(const FachTabelle &tabelle)
{
    int summe = 0;
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        summe += tabelle[i].Anzahl;
    return summe;
}

bool FachSpielbar(const FachTabelle &tabelle, int fach)
{
    return tabelle.at(static_cast<std::size_t>(fach)).Anzahl > 0 && !ZuVollesFach(tabelle, fach);
}

bool IrgendeinFachSpielbar(const FachTabelle &tabelle)
{
    for (int i = 0; i < FachSichtbar; ++i)
        if (FachSpielbar(tabelle, i))
            return true;
    return false;
}

Wurf Wuerfeln(const FachTabelle &tabelle, Zufall &zufall)
{
    Wurf wurf;
    wurf.augen = static_cast<int>(zufall.Rnd() * 6 + 1);
    wurf.fach = wurf.augen == 6 ? FachNeu : wurf.augen;
    wurf.angenommen = FachSpielbar(tabelle, wurf.fach);
    return wurf;
}

bool ZufaelligeKarte(CardRecordset &karten, int fach, int anzahl, Zufall &zufall)
{
    if (!ErsteKarte(karten, fach))
        return false;
    for (int rest = static_cast<int>((anzahl - 1) * zufall.Rnd()); rest > 0; --rest)
        karten.MoveNext();
    return true;
}

} // namespace paukfix
