// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"
#include "FachInfo.h"

#include <array>
#include <optional>

namespace paukfix {

// The rules of the box, apart from its window.

// Compartments with a place on the window that can be asked: 0 to 5.
inline constexpr int FachSichtbar = 6;

// What a redraw of the box shows.
struct BoxBild
{
    // Widths of the bars of compartments 1 to 5, 0 to BreiteMax; the Neu bar has its own.
    std::array<qint16, FachSichtbar> Breite{};   // twips
    std::array<bool, FachSichtbar> balken{true}; // bar i is visible; the Neu bar always is
    qint16 VollstesFach = 0;                     // its bar has the red border, all others a black one

    bool operator==(const BoxBild &) const = default;
};

// What the counts look like.
BoxBild BoxRechnen(const FachTabelle &tabelle);

// True when the box holds no card, done ones included.
bool IstLeer(const FachTabelle &tabelle);

bool UeberKapazitaet(const Fach &fach);

// The compartment that must be worked before `fach` may be asked, if there is one.
std::optional<int> ZuVollesFach(const FachTabelle &tabelle, int fach);

// Makes the next card of compartment `fach` the current one under "BoxKey"; false where it has none.
// Throws StoreError.
bool ErsteKarte(CardRecordset &karten, int fach);

} // namespace paukfix
