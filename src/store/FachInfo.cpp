// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FachInfo.h"

#include <algorithm>

namespace paukfix {

FachTabelle FachStartwerte()
{
    FachTabelle tabelle{};
    constexpr std::array<qint16, FachErledigt> links{390, 3390, 3630, 3990, 4710, 5790};
    constexpr std::array<qint16, FachErledigt> breiteMax{1750, 200, 310, 680, 1030, 1750};
    constexpr std::array<qint16, FachErledigt> kapazitaet{700, 50, 100, 250, 400, 700};
    for (std::size_t i = 0; i < FachErledigt; ++i) {
        tabelle[i].Links = links[i];
        tabelle[i].BreiteMax = breiteMax[i];
        tabelle[i].Kapazitaet = kapazitaet[i];
    }
    return tabelle;
}

int ZielFach(int fach, bool richtig)
{
    if (!richtig)
        return FachFalsch;
    return std::min((fach == FachNeu ? FachFalsch : fach) + 1, FachErledigt);
}

} // namespace paukfix
