// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Fensterbau.h"

class QColor;

namespace paukfix {

// What the parts of the query are built with, beside Fensterbau.h.

void TextFaerben(QWidget *widget, const QColor &farbe);
// Outlines of tick boxes and option buttons that can be seen on the card.
void UmrissFaerben(QWidget *knopf);

// A small label, which LeiseFaerben() gives a quiet tone.
QLabel *Beschriftung(QWidget *eltern, const QString &text);
void LeiseFaerben(QLabel *label, const QColor &grund);

} // namespace paukfix
