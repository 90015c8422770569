// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

namespace paukfix {

// Compartment numbers: 0 "Neu", 1 wrong, 2 to 5 right one to four times in a row, 6 done.
inline constexpr int FachNeu = 0;
inline constexpr int FachFalsch = 1;
inline constexpr int FachErledigt = 6;
inline constexpr int FachAnzahl = 7;

} // namespace paukfix
