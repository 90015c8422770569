// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Achsen.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

Wertachse Wertachse::Fuer(int hoechstens, int tiefstens, int marken)
{
    const auto schritte = [](int wert, int schritt) { return (wert + schritt - 1) / schritt; };
    int schritt = 1;
    // 1, 2, 5, 10, 20, 50 ...
    for (int stufe = 0; schritte(hoechstens, schritt) + schritte(tiefstens, schritt) > std::max(2, marken);
         ++stufe)
        schritt = stufe % 3 == 1 ? schritt / 2 * 5 : schritt * 2;
    return {schritt, std::max(1, schritte(hoechstens, schritt)) * schritt,
            schritte(tiefstens, schritt) * schritt};
}

std::vector<int> Zeitachse::Marken(double breite, const QRectF &feld) const
{
    int schritt = tage > 14 ? 7 : 1;
    while (schritt * feld.width() / tage < breite)
        schritt *= 2;
    std::vector<int> marken;
    for (int tag = 0; X(tage - 1, feld) - X(tag, feld) >= breite; tag += schritt)
        marken.push_back(tag);
    return marken;
}

int Zeitachse::Tag(double x, const QRectF &feld) const
{
    const double tag = std::floor((x - feld.left()) / feld.width() * tage);
    return tag >= 0 && tag < tage ? static_cast<int>(tag) : -1;
}

int Zeitachse::TageJeBalken() const
{
    constexpr int MeisteBalken = 120;
    for (const int tageJe : {1, 7})
        if (tage <= MeisteBalken * tageJe)
            return tageJe;
    return 28;
}

} // namespace paukfix
