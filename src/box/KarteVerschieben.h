// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KarteEinordnen.h"
#include "Meldungen.h"

#include <functional>

namespace paukfix {

// Moves the current card by its answer (KarteEinordnen) and congratulates on a card that is done, after
// `vorMeldung`. Throws StoreError.
void KarteVerschieben(
    CardStore &kartei, Meldungen &meldungen, bool richtig, const std::function<void()> &vorMeldung = [] {});

} // namespace paukfix
