// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachInfo.h"
#include "StoreError.h"

#include <functional>

namespace paukfix {

class CardRecordset;

// A sound file, but more cards than a compartment can count.
class TooManyCards : public StoreError
{
public:
    explicit TooManyCards(int fach);
};

// The seven compartments of the open box, and the only way in which `Anzahl` and `LfdMax` change. They follow
// the card file: what changes it tries the numbers on a copy, writes the file, and keeps the copy once the
// file has it. Running numbers go to 32,767; where they or the count would pass that, StoreError 6 is thrown
// and nothing has changed.
class Faecher
{
public:
    // Read like the table.
    const Fach &operator[](std::size_t fach) const { return tabelle_[fach]; }

    const Fach &at(std::size_t fach) const { return tabelle_.at(fach); }

    FachTabelle::const_iterator begin() const { return tabelle_.begin(); }

    FachTabelle::const_iterator end() const { return tabelle_.end(); }

    static constexpr std::size_t size() { return FachAnzahl; }

    operator const FachTabelle &() const { return tabelle_; }

    // No card is left, as in a box that is not open.
    void Leeren() noexcept;
    // Counts the cards of a file in box order, at whose end the cursor then stands; only the indexes are
    // read. After every eleventh card `gezaehlt` is called. Returns the highest card number, 0 where there is
    // none. Throws StoreError where a card cannot be read or lies in no compartment (9), TooManyCards; all is
    // empty then.
    qint16 Zaehlen(CardRecordset &karten, const std::function<void()> &gezaehlt = {});
    // A card goes to the back of `fach`. Returns its running number.
    qint16 Anhaengen(int fach);
    // A card that has the running number `lfdNr` of `fach` is added.
    void Einreihen(int fach, qint16 lfdNr);
    // A card leaves `fach`. The numbers that were handed out stay so.
    void Entnehmen(int fach);
    // Whether no card can be put to the back of `fach` before its running numbers are closed up.
    bool Verbraucht(int fach) const;
    // The running numbers of `fach` have been closed up in the file; `lfdMax` is the last one now.
    void Aufgerueckt(int fach, int lfdMax);

private:
    Fach &Finden(int fach) { return tabelle_.at(static_cast<std::size_t>(fach)); }

    FachTabelle tabelle_ = FachStartwerte();
};

} // namespace paukfix
