// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkbank.h"

#include <optional>

namespace paukfix {

// Puts cards of the open file back into compartment 0 and opens the file again.

// All cards, with the running numbers 1 to n in the order of their card numbers.
Ausgang AlleNachNeu(const Werkbank &bank);

// The done cards, behind those already in compartment 0, in their order. Returns how many, or nothing where
// it failed.
std::optional<int> ErledigteNachNeu(const Werkbank &bank);

} // namespace paukfix
