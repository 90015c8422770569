// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tagesstand.h"

#include <vector>

namespace paukfix {

// When a box will be done.
struct Prognose
{
    enum class Art
    {
        Unbekannt, // too little is known, or nothing is getting on
        Am,        // at the pace of the last two weeks
        Fern,      // that would be more than five years away
        Fertig,
        OhneKarten
    };

    Art art = Art::Unbekannt;
    QDate tag; // of Am
};

// Right answers that a box still takes at least, all of them right: five for a card of Neu or compartment 1,
// one for one of compartment 5.
int OffeneSchritte(const Kartenzahlen &karten);

// `tage` in the order of their dates, the last one not after `heute`. The pace is that of the answers: cards
// that were added, deleted or put back count as work to be done, and not as a step back.
Prognose Vorhersagen(const std::vector<Tagesstand> &tage, const QDate &heute);

} // namespace paukfix
