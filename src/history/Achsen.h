// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDate>
#include <QRectF>

#include <vector>

namespace paukfix {

// The scale of a picture: round values at equal steps, from `unten` below 0 to `oben` above it, both
// multiples of `schritt` and counted from 0.
struct Wertachse
{
    int schritt = 1, oben = 1, unten = 0;

    // Room for these values, with `marken` steps at most where that is possible (two at least).
    static Wertachse Fuer(int hoechstens, int tiefstens, int marken);

    double Y(double wert, const QRectF &feld) const
    {
        return feld.top() + (oben - wert) / static_cast<double>(oben + unten) * feld.height();
    }
};

// Days side by side, each as wide as the others.
struct Zeitachse
{
    int tage = 1;

    // The left edge of day `tag`, counted from 0; `tage` gives the right edge of the last.
    double X(double tag, const QRectF &feld) const { return feld.left() + tag / tage * feld.width(); }

    // The days to be named, so that names of this width do not touch; without the last one.
    std::vector<int> Marken(double breite, const QRectF &feld) const;

    // The day at `x`; -1 beside them.
    int Tag(double x, const QRectF &feld) const;

    // How many days one bar stands for, so that bars are neither hairs nor many: 1, 7 or 28.
    int TageJeBalken() const;
};

} // namespace paukfix
