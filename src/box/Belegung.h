// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QScopedValueRollback>

class QWidget;

namespace paukfix {

// What keeps the box from beginning something: only one query, roll or opening of a file is under way at a
// time, and none begins while the window is away or behind a dialog.
class Belegung
{
public:
    // `fenster` must outlive it.
    explicit Belegung(const QWidget &fenster) : fenster_(fenster) {}

    // Something is under way.
    bool IstBelegt() const { return belegt_; }

    // Nothing may begin. Keys and clicks do not come to such a window; other ways do (a screen reader, a menu
    // of the desktop's, the clock).
    bool IstGesperrt() const;

    // Under way as long as the result lives.
    [[nodiscard]] QScopedValueRollback<bool> Belegen() { return QScopedValueRollback<bool>(belegt_, true); }

private:
    const QWidget &fenster_;
    bool belegt_ = false;
};

} // namespace paukfix
