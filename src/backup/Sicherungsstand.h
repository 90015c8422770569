// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachNummern.h"

#include <QString>

#include <array>

namespace paukfix {

// What is in a card file.
struct Kartenstand
{
    int karten = 0;
    std::array<int, FachAnzahl> faecher{};
};

// Counts the cards of a file that nobody changes, and looks for nothing. Throws StoreError, as CardFile does.
Kartenstand KarteiZaehlen(const QString &datei);
// The same, once the whole file has passed CheckCardFile.
Kartenstand KarteiPruefen(const QString &datei);

// What has become of a card file since an earlier state of it. A card is known by its number.
struct Kartenunterschied
{
    int dazu = 0;       // cards that were not there
    int weg = 0;        // cards that are no longer there
    int geaendert = 0;  // cards with other texts, pictures or sounds
    int verschoben = 0; // cards in another compartment
    int umgestellt = 0; // cards in the same compartment at another place

    bool operator==(const Kartenunterschied &) const = default;
};

// `jetzt` may be the open file of this program, in a moment in which it does not write. Throws StoreError.
Kartenunterschied Vergleichen(const QString &frueher, const QString &jetzt);

} // namespace paukfix
