// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

class QKeyEvent;

namespace paukfix {

enum class Blaettern
{
    Nicht,
    Vor,
    Zurueck
};

// What a key asks for: Ctrl+"<" goes back, with Shift on. "<" is the key left of "Y" on a German keyboard,
// known by its place; on keyboards that have the signs elsewhere "<" and ">" themselves count.
Blaettern Blaettertaste(const QKeyEvent &taste);

} // namespace paukfix
