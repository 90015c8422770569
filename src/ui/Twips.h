// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QRect>

#include <cmath>

namespace paukfix {

// Positions and sizes of cards and of the box are twips. The factor is odd and both ways round half to even,
// so a whole number of pixels comes back unchanged.
inline constexpr int TwipsJePixel = 15;

// Logical pixels of a length in twips. What is no number counts as 0, what is absurd stays within +-100,000
// pixels.
inline int PixelVonTwips(double twips)
{
    constexpr double Grenze = 100'000.0;
    const double pixel = twips / TwipsJePixel;
    if (std::isnan(pixel))
        return 0;
    return static_cast<int>(std::nearbyint(std::fmin(std::fmax(pixel, -Grenze), Grenze)));
}

inline int TwipsVonPixel(int pixel)
{
    return pixel * TwipsJePixel;
}

inline QRect PixelVonTwips(double links, double oben, double breite, double hoehe)
{
    return {PixelVonTwips(links), PixelVonTwips(oben), PixelVonTwips(breite), PixelVonTwips(hoehe)};
}

} // namespace paukfix
