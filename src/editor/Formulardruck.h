// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Druckauftrag.h"

class QWidget;

namespace paukfix {

// Prints the widget as it is on the screen, in its size, or smaller where the page is. Throws StoreError
// where the printer does not take it.
void FormularDrucken(QWidget &formular, QPrinter &drucker);

} // namespace paukfix
