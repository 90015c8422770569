// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

#include <array>

// One compartment ("Fach") of the box; positions and widths in twips (15 twips are one logical pixel).
struct Fach
{
    qint16 Links = 0;      // left edge on the window
    qint16 BreiteMax = 0;  // width of the full bar
    qint16 Kapazitaet = 0; // cards it should hold at most
    qint16 Anzahl = 0;     // cards in it now; may exceed Kapazitaet
    qint16 LfdMax = 0;     // highest FachLfdNr handed out in it
};

// Compartment numbers: 0 "Neu", 1 wrong, 2 to 5 right one to four times in a row, 6 done.
inline constexpr int FachNeu = 0;
inline constexpr int FachFalsch = 1;
inline constexpr int FachErledigt = 6;
inline constexpr int FachAnzahl = 7;

using FachTabelle = std::array<Fach, FachAnzahl>;

// All counts 0, positions, widths and capacities at their start values. Compartment 6 keeps 0 throughout.
FachTabelle FachStartwerte();

// Where a card of compartment `fach` goes after a right or a wrong answer.
int ZielFach(int fach, bool richtig);

// Raises or lowers a 16-bit count; throws StoreError 6 where the result does not fit.
qint16 Plus16(qint16 wert, int um);
// Rounds half to even, as the box always has; throws StoreError 6 outside 16 bits.
qint16 Runden16(double wert);
