// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>

#include <vector>

namespace paukfix {

class CardRecordset;

// What a box is known by wherever its file lies: of 256 of its cards the number and what it says, both as
// hashes. Which cards those are depends on their numbers alone, so that of two states of a box the same ones
// are compared, however many have come, gone or changed. Cards without text tell no box from another and are
// left out.
class Kartenabdruck
{
public:
    Kartenabdruck() = default;

    // Reads beside the cursor; throws StoreError.
    explicit Kartenabdruck(CardRecordset &karten);

    // From what Bytes() gave; anything else is the print of a box without texts.
    static Kartenabdruck AusBytes(const QByteArray &bytes);
    QByteArray Bytes() const;

    bool IstLeer() const { return karten_.empty(); }

    struct Vergleich
    {
        int gleiche = 0;   // cards that say the same under the same number
        double anteil = 0; // of the box with the fewer cards, 0 to 1
    };

    Vergleich Mit(const Kartenabdruck &anderer) const;

    bool operator==(const Kartenabdruck &) const = default;

private:
    struct Karte
    {
        quint64 nummer = 0, text = 0;

        bool operator==(const Karte &) const = default;

        bool operator<(const Karte &andere) const
        {
            return nummer != andere.nummer ? nummer < andere.nummer : text < andere.text;
        }
    };

    bool vollstaendig_ = true;  // no card was left out for want of room
    std::vector<Karte> karten_; // by `nummer`
};

} // namespace paukfix
