// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

namespace paukfix {

// Moves the current card by its answer to the back of its new compartment, durably, and keeps counts and
// session counters in step. Returns the new compartment. Throws StoreError; FachInfo and the counters are
// then as they were.
int KarteEinordnen(CardStore &kartei, bool richtig);

// Counts the cards of the open file anew, after something went wrong. Where the
// file can no longer be read, or is no longer there, closes it and leaves in FehlerStatus `fehler`, the
// number of the error that made it necessary.
void NeuZaehlen(CardStore &kartei, int fehler) noexcept;

} // namespace paukfix
