// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

namespace paukfix {

// What the windows of the box share beyond the open card file.
struct BoxZustand
{
    // The compartment with the highest fill ratio as of the last redraw of the box; 0 while 1 to 5 are empty.
    qint16 VollstesFach = 0;
};

} // namespace paukfix
