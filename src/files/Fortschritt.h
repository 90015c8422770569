// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <functional>

// Told now and then how far work over many cards has come: `erledigt` of `gesamt` steps. 0 of 0: it takes a
// while that nobody knows.
using Fortschritt = std::function<void(int erledigt, int gesamt)>;

// So many steps lie between two tellings.
inline constexpr int FortschrittSchritte = 64;

inline void Melden(const Fortschritt &fortschritt, int erledigt, int gesamt)
{
    if (fortschritt && erledigt % FortschrittSchritte == 0)
        fortschritt(erledigt, gesamt);
}
