// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkbank.h"

namespace paukfix {

// Makes a package of the open card file and what its cards name at `ziel`. What is named and missing is
// reported.
Ausgang KarteiPacken(const Werkbank &bank, const QString &ziel);

} // namespace paukfix
