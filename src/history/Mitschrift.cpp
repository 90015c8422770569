// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Mitschrift.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace paukfix {

void Mitschrift::Zaehlen(std::vector<Beitrag> &bisher, const QDate &heute, int anzahl, Zaehler zaehler)
{
    int mehr = std::accumulate(bisher.begin(), bisher.end(), anzahl,
                               [](int rest, const Beitrag &beitrag) { return rest - beitrag.anzahl; });
    if (mehr > 0) {
        if (bisher.empty() || bisher.back().tag != heute)
            bisher.push_back({heute, 0});
        bisher.back().anzahl += mehr;
        neu_[heute].*zaehler += mehr;
    }
    while (mehr < 0 && !bisher.empty()) {
        Beitrag &letzter = bisher.back();
        const int weniger = std::min(-mehr, letzter.anzahl);
        letzter.anzahl -= weniger;
        neu_[letzter.tag].*zaehler -= weniger;
        mehr += weniger;
        if (letzter.anzahl == 0)
            bisher.pop_back();
    }
}

void Mitschrift::Sehen(const QDate &heute, int richtig, int falsch, const Kartenzahlen &karten)
{
    Zaehlen(richtig_, heute, richtig, &Tagesaenderung::richtig);
    Zaehlen(falsch_, heute, falsch, &Tagesaenderung::falsch);
    const auto jetzt = std::pair(heute, karten);
    if (zuletzt_ == jetzt && !neu_.contains(heute))
        return;
    zuletzt_ = jetzt;
    neu_[heute].karten = karten;
}

Tagesaenderungen Mitschrift::Abholen()
{
    return std::exchange(neu_, {});
}

} // namespace paukfix
