// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QPalette>

namespace paukfix {

// The few colours that do not come from the desktop's palette. The signal colours fill areas and frames and
// carry black where they carry text; as text on the desktop's ground they are taken through Lesbar().
namespace Farben {

inline constexpr QColor Richtig{0, 255, 0};
inline constexpr QColor Falsch{255, 0, 0};
inline constexpr QColor VollstesFach{255, 0, 0}; // the border of the fullest compartment
inline constexpr QColor AufSignal{0, 0, 0};      // text on Richtig and Falsch

inline constexpr double KontrastText = 4.5; // least contrast of text with its ground
inline constexpr double KontrastUmriss = 3; // of outlines that carry a meaning

// Contrast of two opaque colours after WCAG 2: 1 for equal ones, 21 for black on white.
double Kontrast(const QColor &eine, const QColor &andere);

// The shade of `farbe` nearest to it that has at least `kontrast` on `grund`.
QColor Lesbar(const QColor &farbe, const QColor &grund, double kontrast = KontrastText);

// `anteil` (0 to 1) of `farbe` laid over `grund`: the quiet tone of a signal colour.
QColor Getoent(const QColor &farbe, const QColor &grund, double anteil);

// The text of explanations: `text`, quieter.
QColor Leise(const QColor &text, const QColor &grund);
// The same for the labels of a window of `palette`. The result holds this one colour, and not for what is
// disabled: all others keep following the desktop.
QPalette Leise(const QPalette &palette);

} // namespace Farben

} // namespace paukfix
