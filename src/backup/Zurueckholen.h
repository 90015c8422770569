// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

namespace paukfix {

// Lets the backup take the place of the card file at `platz`; what stands there is gone then. Where that is
// the open file it is closed, and has to be opened anew. The backup is checked first and stays where it is.
// Throws StoreError; the card file is then as it was, and closed only where its place could not be taken.
void Zurueckholen(CardStore &kartei, const QString &sicherung, const QString &platz);

} // namespace paukfix
