// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QFont>
#include <QFontInfo>

#include <algorithm>

namespace paukfix {

// The four sizes of the program's texts, as multiples of the desktop's font: small (labels, keys), normal,
// large (answers, plates, the verdict) and display (the question, counts).
namespace Schriftgrad {

inline constexpr double Klein = 0.9;
inline constexpr double Gross = 1.35;
inline constexpr double Anzeige = 2.0;

// `schrift`, `grad` times as large, and never smaller than 11 device-independent pixels.
inline QFont In(QFont schrift, double grad)
{
    constexpr double KleinstePixel = 11;
    const double punkte = QFontInfo(schrift).pointSizeF();
    const double pixel = QFontInfo(schrift).pixelSize();
    const double mindestens = pixel > 0 ? KleinstePixel / pixel : grad;
    schrift.setPointSizeF(punkte * (grad < 1 ? std::max(grad, std::min(1.0, mindestens)) : grad));
    return schrift;
}

} // namespace Schriftgrad

} // namespace paukfix
