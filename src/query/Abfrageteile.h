// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Fensterbau.h"
#include "Schriftgrade.h"

#include <QFont>
#include <QLabel>
#include <QPalette>

namespace paukfix {

struct Hausfarben;

// What the parts of the query are built with, beside Fensterbau.h.

// A small quiet label.
QLabel *Beschriftung(QWidget *eltern, const QString &text);
void HalbfettSetzen(QWidget *widget);

// The size of a text on the card is the stored one times a factor that shows what was written with the
// standard font as large as `grad` makes the window's.
double Kartenfaktor(const QFont &fenster, double grad);
// The standard font of a card's text: its size is what the factor is for.
QFont Kartenschrift(QFont fenster);

// The colours of all that stands on the query's card: ink on the card, quiet ink for labels.
QPalette Kartenpalette(const QPalette &fenster);

} // namespace paukfix
