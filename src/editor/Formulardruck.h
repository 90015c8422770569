// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPrinter>

#include <memory>

class QWidget;

// The default printer, else the first one; nothing where no printer is installed.
std::unique_ptr<QPrinter> Standarddrucker();

// Prints the widget as it is on the screen, in its size, or smaller where the page is. Throws StoreError
// where the printer takes nothing.
void FormularDrucken(QWidget &formular, QPrinter &drucker);
