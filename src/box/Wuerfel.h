// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"
#include "Zufall.h"

namespace paukfix {

// The rules of the die, apart from its picture.

struct Wurf
{
    int augen = 0; // 1 to 6
    int fach = 0;  // the compartment it stands for; 6 pips are Neu
    bool angenommen = false;
};

// Cards that the die can find: all but the done ones.
int KartenImSpiel(const FachTabelle &tabelle);

// True when `fach` has cards and no compartment is in their way.
bool FachSpielbar(const FachTabelle &tabelle, int fach);
// False when every roll would be rejected.
bool IrgendeinFachSpielbar(const FachTabelle &tabelle);

Wurf Wuerfeln(const FachTabelle &tabelle, Zufall &zufall);

// Makes a random card of compartment `fach`, which holds `anzahl`, the current one; its last card is never
// drawn while there are more. False where the compartment has none. Throws StoreError.
bool ZufaelligeKarte(CardRecordset &karten, int fach, int anzahl, Zufall &zufall);

} // namespace paukfix
