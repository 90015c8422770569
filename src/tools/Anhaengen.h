// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkbank.h"

#include <optional>

namespace paukfix {

// Copies every card of the card file `quelle` to compartment 0 of the open one, and opens that again. The
// open file itself is refused by message, as is a file of its name in a directory whose path is as long as
// KarteiPfad. The source is only read; it may be one of the former database engine, or damaged: then what a
// repair would find is taken over. `anzahl` gets the number of the cards that were added. What failed is told
// when the box shows what came of it.
Ausgang KarteiAnhaengen(const Werkbank &bank, const QString &quelle, int *anzahl = nullptr);

// How many cards the sound card file `quelle` holds. Nothing where there is none of that name, or where it
// would have to be mended or converted first.
std::optional<int> KartenIn(const CardStore &store, const QString &quelle);

} // namespace paukfix
