// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"

#include <QFont>
#include <QPointF>
#include <QRect>
#include <QSize>

namespace paukfix {

// Where everything of the box stands in a window of a given size and font. Across, the compartments stand
// where `Links` and `BreiteMax` put them; all of it is scaled as one. Down, head and near walls take what
// their texts need, and the cards the rest, within limits.
class KastenMasse
{
public:
    // What a smaller window does without; each step also lacks what those before it have given up. Only then
    // do the counts get smaller, which are twice as large as the window's texts otherwise.
    enum class Stufe
    {
        Alles,
        OhneLegende,
        OhneAntworten,
        OhneKapazitaet
    };

    // A tray: its near face from the side walls' upper end to the floor that it stands on, walls included.
    struct Wanne
    {
        QRect vorn;
        int boden = 0; // where the near wall begins, on which the cards stand
    };

    KastenMasse() = default;
    KastenMasse(QSize fenster, const FachTabelle &tabelle, const QFont &schrift);

    // Pixels on the window for twips of the box.
    double Pixel(double twips) const { return twips * massstab_; }

    // The smallest window in which all numbers can be read.
    static QSize Mindestgroesse(const QFont &schrift);
    // Height that suits a width.
    static int Hoehe(int breite);

    // How many pixels the cards of each compartment take from its left.
    std::array<int, FachSichtbar> Fuellung(const FachTabelle &tabelle, const BoxBild &bild) const;
    // The place of the asked card whose left top corner stands at these twips.
    QRect Karte(double links, double oben) const;

    Stufe stufe = Stufe::Alles;
    QFont schildSchrift, zahlSchrift, kleineSchrift, knopfSchrift;
    QRect einladung, ueberblick; // the head, left and right
    int knopfHoehe = 0;
    Wanne neu, lernen, erledigt;
    std::array<QRect, FachSichtbar> fach;      // the compartments' insides, as high as the cards: Image0
    std::array<QRect, FachSichtbar> schild;    // the name on the near wall
    std::array<QRect, FachSichtbar> zaehler;   // count and capacity below
    QRect stapel, stapelSchild, stapelZaehler; // the done cards
    QRect wuerfel, wuerfelTaste;               // the die, the name of its key
    QSize karte;                               // the card that is asked
    int trennerOben = 0;                       // upper end of the walls between compartments
    QPointF tiefe;                             // from the near end of a card or wall to its far end
    double wand = 0;                           // thickness of the walls
    QRect bild;                                // all of it but the head

private:
    void StufeWaehlen(QSize fenster, const QFont &schrift);
    bool Passt(Stufe stufe, double zahl, QSize fenster, const QFont &schrift);
    QRect Rechteck(double links, double breite, int oben, int unten) const;

    double massstab_ = 0, links_ = 0;
    int kopf_ = 0, fuss_ = 0; // heights of the head and of the near walls
};

} // namespace paukfix
