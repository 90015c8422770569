// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

namespace paukfix {

// How the work on the open box goes on when its file has failed. The session and its tally stay.

// Where the file has been lost (taken away, put back, changed by another program), opens the card file at
// `pfad` anew; it must hold the same cards, unless it is the same file. Nothing happens where the file is as
// it was left. Throws StoreError; what is open stays open then, unless it is the file that has changed and
// can no longer be opened. `sitzung` is a copy of the session so far, as a box that is closed has none.
void WiederOeffnen(CardStore &kartei, const QString &pfad, const Sitzung &sitzung);

// Writes the whole open box as another card file at `ziel` and goes on in it; the steps that can be taken
// back stay. Nobody touches the former file. Throws StoreError; what is open stays open then.
void Umziehen(CardStore &kartei, const QString &ziel);

} // namespace paukfix
