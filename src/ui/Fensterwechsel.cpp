// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fensterwechsel.h"

#include "Eingabewache.h"

#include <QWidget>

namespace paukfix {

void Fensterwechsel::Beginnen()
{
    hin_.emplace(box_.windowHandle());
    eingabe_.Halten();
}

void Fensterwechsel::Erscheint(QWidget &dialog)
{
    // What was typed before the keyboard was held is on its way to the box, which takes no keys once the
    // dialog is shown.
    TastenAbholen(box_.windowHandle());
    eingabe_.Weitergeben(dialog);
}

void Fensterwechsel::Geht(QWidget &dialog)
{
    eingabe_.Halten();
    zurueck_.emplace(dialog.windowHandle(), box_.windowHandle());
    TastenAbholen(box_.windowHandle()); // a hidden window takes none
}

void Fensterwechsel::Beenden()
{
    zurueck_.reset();
    hin_.reset();
}

} // namespace paukfix
