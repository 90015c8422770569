// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenblatt.h"

#include <exception>

namespace paukfix {

// How the cards of the form come into the card file.

enum class Kopiervorlage
{
    Keine,
    AktuelleKarte // whose texts, where they were not changed, are copied as they are
};

// What became of a card that was to be added.
struct Ablage
{
    int nummer = 0;            // that it was to have; 0 where none was handed out
    std::exception_ptr fehler; // null where the card is there, be it that the disk has failed behind it
};

// Adds the form as a new card behind the last of the new ones, under the next number. A number that is handed
// out stays so, even when the card is not stored after all.
Ablage KarteAnlegen(CardStore &kartei, Kartenblatt blatt, Kopiervorlage vorlage);

// Writes the form over the current card. Throws StoreError; the record is as it was then, unless the disk
// failed.
void KarteUeberschreiben(CardStore &kartei, const Kartenblatt &blatt);

} // namespace paukfix
