// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CharFormat.h"

#include <algorithm>

namespace paukfix {

namespace {
constexpr double TwipsPerPoint = 20.0;
constexpr double HeightPerSize = 1.2; // ascent and descent together, for a usual font
constexpr double UsualPointSize = 10.0;
constexpr double MaxShownPercent = 40.0; // more would run into the next line: lines do not grow with it

double PointSize(const QTextCharFormat &format, const QFont &defaultFont)
{
    if (format.fontPointSize() > 0)
        return format.fontPointSize();
    if (defaultFont.pointSizeF() > 0)
        return defaultFont.pointSizeF();
    return UsualPointSize;
}
} // namespace

int CharOffset(const QTextCharFormat &format)
{
    return format.intProperty(CharOffsetProperty);
}

void SetCharOffset(QTextCharFormat &format, int twips, const QFont &defaultFont)
{
    format.setProperty(CharOffsetProperty, twips);
    format.setVerticalAlignment(QTextCharFormat::AlignNormal);
    const double height = PointSize(format, defaultFont) * HeightPerSize;
    const double percent = 100.0 * twips / TwipsPerPoint / height;
    format.setBaselineOffset(std::clamp(percent, -MaxShownPercent, MaxShownPercent));
}

QColor TextColour(const QTextCharFormat &format)
{
    const QBrush brush = format.foreground();
    if (brush.style() == Qt::NoBrush || (brush.color().rgb() & RGB_MASK) == 0)
        return {};
    return brush.color();
}

void SetTextColour(QTextCharFormat &format, const QColor &colour)
{
    const bool automatic = !colour.isValid() || (colour.rgb() & RGB_MASK) == 0;
    format.setForeground(automatic ? QBrush(Qt::NoBrush) : QBrush(colour));
}

} // namespace paukfix
