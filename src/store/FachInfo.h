// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachNummern.h"
#include "Zahl16.h"

#include <QtGlobal>

#include <array>

namespace paukfix {

// One compartment ("Fach") of the box; positions and widths in twips (15 twips are one logical pixel).
struct Fach
{
    qint16 Links = 0;      // left edge on the window
    qint16 BreiteMax = 0;  // width of the full bar
    qint16 Kapazitaet = 0; // cards it should hold at most
    qint16 Anzahl = 0;     // cards in it now; may exceed Kapazitaet
    qint16 LfdMax = 0;     // highest FachLfdNr handed out in it
};

using FachTabelle = std::array<Fach, FachAnzahl>;

// All counts 0, positions, widths and capacities at their start values. Compartment 6 keeps 0 throughout.
FachTabelle FachStartwerte();

// Where a card of compartment `fach` goes after a right or a wrong answer.
int ZielFach(int fach, bool richtig);

} // namespace paukfix
