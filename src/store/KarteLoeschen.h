// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

#include <optional>

namespace paukfix {

// Whether the done cards (compartment 6) are cards that a box has left: for a query they are, for the editor
// they are not.
enum class Erledigte
{
    Zaehlen,
    ZaehlenNicht
};

// The last card of a box cannot be deleted.
bool IstLetzteKarte(const Faecher &faecher, Erledigte erledigte);

// What became of a card that was to be deleted. Both may be: the card is gone although the disk failed.
struct Loeschung
{
    bool geloescht = false;
    std::optional<StoreError> fehler;
};

// Deletes the current card durably and counts it out of its compartment. Throws StoreError where there is no
// current card.
Loeschung KarteLoeschen(CardStore &kartei);

// Whether the card of this number is in the file, asked after a failure of the disk: all may have been
// written before it. Nothing where it cannot be read.
std::optional<bool> StehtInDerKartei(CardRecordset &karten, double frageNr);

} // namespace paukfix
