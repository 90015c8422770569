// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tastaturwechsel.h"

#include <optional>

class QWidget;

namespace paukfix {

class Eingabewache;

// Takes the learner from the box to a dialog over it and back, without losing a key on the way: what is typed
// while the dialog comes belongs to it, what is typed while it goes belongs to the box.
class Fensterwechsel
{
public:
    // Both outlive this.
    Fensterwechsel(Eingabewache &eingabe, QWidget &box) : eingabe_(eingabe), box_(box) {}

    // A dialog is to come.
    void Beginnen();
    // Right before `dialog` is shown.
    void Erscheint(QWidget &dialog);
    // Right before it is hidden. Input is kept from here on, until it is given to the box.
    void Geht(QWidget &dialog);
    // It is hidden, or did not come: returns when the box has the keyboard.
    void Beenden();

private:
    Eingabewache &eingabe_;
    QWidget &box_;
    std::optional<Tastaturhalt> hin_;
    std::optional<Tastaturrueckgabe> zurueck_;
};

} // namespace paukfix
