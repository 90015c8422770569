// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <functional>

namespace paukfix {

// Told now and then how far work over many cards has come: `erledigt` of `gesamt` steps. 0 of 0: it takes a
// while that nobody knows.
using Progress = std::function<void(int erledigt, int gesamt)>;

// So many steps lie between two tellings.
inline constexpr int ProgressSteps = 64;

inline void Melden(const Progress &progress, int erledigt, int gesamt)
{
    if (progress && erledigt % ProgressSteps == 0)
        progress(erledigt, gesamt);
}

} // namespace paukfix
