// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Farben.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

double Linear(double anteil)
{
    return anteil <= 0.04045 ? anteil / 12.92 : std::pow((anteil + 0.055) / 1.055, 2.4);
}

double Leuchtdichte(const QColor &farbe)
{
    return 0.2126 * Linear(farbe.redF()) + 0.7152 * Linear(farbe.greenF()) + 0.0722 * Linear(farbe.blueF());
}

} // namespace

namespace Farben {

double Kontrast(const QColor &eine, const QColor &andere)
{
    const auto [dunkel, hell] = std::minmax({Leuchtdichte(eine), Leuchtdichte(andere)});
    return (hell + 0.05) / (dunkel + 0.05);
}

QColor Lesbar(const QColor &farbe, const QColor &grund, double kontrast)
{
    if (Kontrast(farbe, grund) >= kontrast)
        return farbe;
    // Towards whichever of black and white stands out more on the ground.
    const QColor ziel = Kontrast(Qt::black, grund) > Kontrast(Qt::white, grund) ? Qt::black : Qt::white;
    constexpr int Stufen = 64;
    for (int stufe = 1; stufe < Stufen; ++stufe) {
        const QColor probe = Getoent(ziel, farbe, double(stufe) / Stufen);
        if (Kontrast(probe, grund) >= kontrast)
            return probe;
    }
    return ziel;
}

QColor Getoent(const QColor &farbe, const QColor &grund, double anteil)
{
    const auto mische = [anteil](int oben, int unten) {
        return static_cast<int>(std::lround(oben * anteil + unten * (1 - anteil)));
    };
    return {mische(farbe.red(), grund.red()), mische(farbe.green(), grund.green()),
            mische(farbe.blue(), grund.blue())};
}

QColor Leise(const QColor &text, const QColor &grund)
{
    return Lesbar(Getoent(text, grund, 0.65), grund);
}

QPalette Leise(const QPalette &palette)
{
    QPalette leise;
    for (const auto gruppe : {QPalette::Active, QPalette::Inactive})
        leise.setColor(
            gruppe, QPalette::WindowText,
            Leise(palette.color(gruppe, QPalette::WindowText), palette.color(gruppe, QPalette::Window)));
    return leise;
}

} // namespace Farben

} // namespace paukfix
