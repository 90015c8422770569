// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <optional>

namespace paukfix {

class CardRecordset;

// The first card of compartment `fach` in the box's order, read beside the cursor, which does not notice;
// nothing where the compartment is empty. Null is the default of its member. Throws StoreError.
std::optional<CardRecord> FirstCard(CardRecordset &cards, int fach);

} // namespace paukfix
