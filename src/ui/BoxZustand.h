// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

// What the windows of the box share beyond the open card file.
struct BoxZustand
{
    // The verdict that the last query left: -1 right, 0 wrong, 10 edit requested, 11 card deleted.
    qint16 AbfrageErgebnis = 0;
    // The compartment with the highest fill ratio as of the last redraw of the box; 0 while 1 to 5 are empty.
    qint16 VollstesFach = 0;
};
