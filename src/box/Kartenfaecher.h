// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class QPainter;

namespace paukfix {

// The cards of one compartment, seen from the front and a little from the right: near edges stand on the
// floor, faces go back from them. Up to 13 cards are all there, fanned out into the room that is free; of
// more there are as many edges as fit, and the front ones lean. The front card, which is asked next, is
// honey.
class Kartenfaecher
{
public:
    // Pixels. The feet stand in the left `gefuellt` of `innen`, which is as high as the cards.
    struct Platz
    {
        std::size_t saat = 0; // of the pattern of colours and heights
        QRectF innen;
        double gefuellt = 0;
        double pixelJeTwip = 1;
        QPointF tiefe; // from a card's near end to its far end
    };

    Kartenfaecher(int anzahl, const Platz &platz);

    void Malen(QPainter &maler) const;
    // Where a first card would lean.
    void LeerMalen(QPainter &maler, double hoehe) const;

    // The left top corner of the front card's face; there must be a card.
    QPointF Vorderste() const;

    // Of the cards that are seen, from the back to the front.
    struct Karte
    {
        double fuss = 0, dicke = 0, neigung = 0, hoehe = 0;
        bool steht = false; // upright behind others
    };

    const std::vector<Karte> &Karten() const { return karten_; }

private:
    Platz platz_;
    std::vector<Karte> karten_;
};

} // namespace paukfix
