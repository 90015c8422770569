// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

namespace paukfix {

// A card as it was when it was asked, by which it is known again.
struct GefragteKarte
{
    double frageNr = 0;
    int fach = 0, lfdNr = 0;
    QString frage;
};

// The current card. Throws StoreError where it cannot be read.
GefragteKarte Gefragt(CardStore &kartei);

// Moves the card by its answer to the back of its new compartment, durably, and keeps counts and session
// counters in step; the card becomes the current one. Returns the new compartment. Throws StoreError;
// FachInfo and the counters are then as they were. An answer that a failing disk has stored all the same, now
// or at an earlier attempt, is just counted.
int KarteEinordnen(CardStore &kartei, const GefragteKarte &karte, bool richtig);

// Counts the cards of the open file anew, after something went wrong. Where the
// file can no longer be read, or is no longer there, closes it and leaves in FehlerStatus `fehler`, the
// number of the error that made it necessary.
void NeuZaehlen(CardStore &kartei, int fehler) noexcept;

} // namespace paukfix
