// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Abfrage.h"

#include <QDateTime>
#include <QImage>

namespace paukfix {

// The card that will probably be asked next, with the picture of its question, read while nobody waits. What
// cannot be read is left out without a word: it is told when the card is asked.
class Vorauslese
{
public:
    // Reads the first card of compartment `fach`.
    void Lesen(CardStore &store, int fach);

    void Verwerfen() { *this = {}; }

    // An empty one where there is none.
    const Abfragekarte &Karte() const { return karte_; }

    // Null where the card has none, or where it lies elsewhere than beside the card file.
    const QImage &Bild() const { return bild_; }

    // Whether this is the card, and the file of its picture is still what was read.
    bool Gilt(const Abfragekarte &karte) const;

private:
    Abfragekarte karte_;
    bool gelesen_ = false;
    QImage bild_;
    QString bilddatei_;
    QDateTime geaendert_; // the file, when it was read
};

} // namespace paukfix
