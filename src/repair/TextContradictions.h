// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SalvagedCard.h"

namespace paukfix {

// Remarks the texts of the card whose formatted form says something else than the plain one that is stored
// beside it; blanks and line breaks do not count. Nothing is changed: both stay as they are. Where one of the
// two is empty, as in cards that the editor has emptied, and in a text that is not shown whole, there is
// nothing to compare.
void RemarkContradictions(SalvagedCard &card);

} // namespace paukfix
