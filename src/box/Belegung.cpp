// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Belegung.h"

#include <QApplication>
#include <QWidget>

namespace paukfix {

bool Belegung::IstGesperrt() const
{
    return belegt_ || !fenster_.isVisible() || QApplication::activeModalWidget();
}

} // namespace paukfix
