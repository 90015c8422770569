// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"

#include <QRectF>
#include <QSize>

namespace paukfix {

// Where everything of the box stands in a window of a given size. Across, the compartments stand where
// `Links` and `BreiteMax` put them; all of it is scaled as one. Down, the compartments take what height there
// is, within limits.
class KastenMasse
{
public:
    KastenMasse() = default;
    KastenMasse(QSize fenster, const FachTabelle &tabelle);

    // Pixels on the window for twips of the box.
    double Pixel(double twips) const { return twips * massstab_; }

    // The smallest window in which all numbers can be read.
    static QSize Mindestgroesse();
    // Height that suits a width.
    static int Hoehe(int breite);

    QRect neu, lernen;                         // the two trays, walls included
    std::array<QRect, FachSichtbar> fach;      // the compartments' insides: Image0
    std::array<QRect, FachSichtbar> schild;    // the name above
    std::array<QRect, FachSichtbar> zaehler;   // "count / capacity" below
    QRect stapel, stapelSchild, stapelZaehler; // the done cards
    QRect wuerfel, wuerfelTaste;               // the die, the name of its key
    QSize karte;                               // the card that is asked
    double wand = 0;                           // thickness of the walls

    // The place of the asked card whose left top corner stands at these twips.
    QRect Karte(double links, double oben) const;

private:
    QRect Rechteck(double links, double oben, double breite, double hoehe) const;

    double massstab_ = 0;
    QPointF ursprung_;
};

} // namespace paukfix
