// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tagesrechnung.h"

#include <algorithm>

namespace paukfix {

std::vector<Tagesstand> Glaubhaft(const std::vector<Tagesstand> &tage, const QDate &heute)
{
    const QDate fruehestens(2020, 1, 1);
    std::vector<Tagesstand> glaubhaft;
    std::ranges::copy_if(tage, std::back_inserter(glaubhaft), [&](const Tagesstand &stand) {
        return stand.tag >= fruehestens && stand.tag <= heute;
    });
    return glaubhaft;
}

QDate Beginn(Zeitraum zeitraum, const std::vector<Tagesstand> &tage, const QDate &heute)
{
    switch (zeitraum) {
    case Zeitraum::Tage30:
        return heute.addDays(-29);
    case Zeitraum::Wochen12:
        return heute.addDays(1 - 12 * 7);
    case Zeitraum::Alles:
        break;
    }
    const QDate woche = heute.addDays(-6);
    return tage.empty() ? woche : std::min(woche, tage.front().tag);
}

int TageInFolge(const std::vector<Tagesstand> &tage, const QDate &heute)
{
    int folge = 0;
    QDate erwartet = heute;
    for (auto stand = tage.rbegin(); stand != tage.rend(); ++stand) {
        if (!stand->Gelernt())
            continue;
        if (folge == 0 && stand->tag == heute.addDays(-1))
            erwartet = stand->tag;
        if (stand->tag != erwartet)
            break;
        ++folge;
        erwartet = erwartet.addDays(-1);
    }
    return folge;
}

std::vector<std::optional<Tagesstand>> Lueckenlos(const std::vector<Tagesstand> &tage, const QDate &von,
                                                  const QDate &bis)
{
    std::vector<std::optional<Tagesstand>> alle;
    std::optional<Tagesstand> letzter;
    auto stand = tage.begin();
    for (; stand != tage.end() && stand->tag < von; ++stand)
        letzter = *stand;
    for (QDate tag = von; tag <= bis; tag = tag.addDays(1)) {
        if (letzter)
            letzter = Tagesstand{.tag = tag, .karten = letzter->karten};
        if (stand != tage.end() && stand->tag == tag)
            letzter = *stand++;
        alle.push_back(letzter);
    }
    return alle;
}

} // namespace paukfix
