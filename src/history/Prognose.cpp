// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Prognose.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace paukfix {

namespace {

constexpr int Rueckblick = 14;     // days
constexpr int Fern = 5 * 365;      // days
constexpr int SchritteZurueck = 4; // what a wrong answer costs at most: from compartment 5 to 1

// What a card of each compartment still takes.
constexpr Kartenzahlen Schritte{5, 5, 4, 3, 2, 1, 0};
constexpr int VolleSchritte = 5;

int Anzahl(const Kartenzahlen &karten)
{
    return std::accumulate(karten.begin(), karten.end(), 0);
}

// Steps that were done; new cards do not change it.
int Getan(const Kartenzahlen &karten)
{
    return VolleSchritte * Anzahl(karten) - OffeneSchritte(karten);
}

} // namespace

int OffeneSchritte(const Kartenzahlen &karten)
{
    return std::inner_product(karten.begin(), karten.end(), Schritte.begin(), 0);
}

Prognose Vorhersagen(const std::vector<Tagesstand> &tage, const QDate &heute)
{
    using Art = Prognose::Art;
    if (tage.empty() || Anzahl(tage.back().karten) == 0)
        return {Art::OhneKarten, {}};
    const int offen = OffeneSchritte(tage.back().karten);
    if (offen == 0)
        return {Art::Fertig, {}};

    const QDate seit = heute.addDays(-Rueckblick);
    int fortschritt = 0;
    for (std::size_t i = 1; i < tage.size(); ++i) {
        if (tage[i].tag <= seit)
            continue;
        // No more than what the answers can have done: the rest was a tool, the editor or an import.
        const int schritte = Getan(tage[i].karten) - Getan(tage[i - 1].karten);
        fortschritt +=
            std::clamp(schritte, tage[i].richtig - SchritteZurueck * tage[i].falsch, tage[i].richtig);
    }
    const qint64 ueber = std::min<qint64>(Rueckblick, tage.front().tag.daysTo(heute));
    if (fortschritt <= 0 || ueber <= 0)
        return {Art::Unbekannt, {}};
    const double dauer = std::ceil(static_cast<double>(offen) * static_cast<double>(ueber) / fortschritt);
    return dauer > Fern ? Prognose{Art::Fern, {}}
                        : Prognose{Art::Am, heute.addDays(static_cast<qint64>(dauer))};
}

} // namespace paukfix
