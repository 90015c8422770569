// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tastenfenster.h"

namespace paukfix {

// The keys and buttons of the program's windows, to be kept true with them.
QList<Tastengruppe> AlleTasten();

} // namespace paukfix
