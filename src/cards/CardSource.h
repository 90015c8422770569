// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "StoreError.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace paukfix {

// A value of a card that is copied. Kept from card to card, so that texts need no new memory.
struct CopiedValue
{
    enum class Kind
    {
        Null,
        Number, // or a tick: anything but 0
        Text
    };
    Kind kind = Kind::Null;
    double number = 0;
    std::string text; // UTF-8
};

// What a card is mostly copied with, beside its keys. What no program ever reads (the types and loop flags of
// pictures) is not copied.
const std::vector<int> &CopiedColumns();

// Where a card that is copied is to lie.
struct CardPlace
{
    int fach = 0; // 0 to 6
    // Its own numbers, 16 bits each; they are kept where the box was empty before, and are free.
    std::optional<int> frageNr = {}, lfdNr = {};
};

// Cards that are to be copied into another card file, in the order of their box, each once.
class CardSource
{
public:
    CardSource() = default;
    CardSource(const CardSource &) = delete;
    CardSource &operator=(const CardSource &) = delete;
    virtual ~CardSource() = default;

    // How many there are, as far as is known.
    virtual int Count() const = 0;

    // Steps to the next card; false behind the last one. Throws StoreError where the source cannot be read
    // on.
    virtual bool Next() = 0;

    // What its cards are copied with, beside their keys; the same as long as it lives.
    virtual const std::vector<int> &Columns() const { return CopiedColumns(); }

    // Of the card that Next() has stepped to: one of Columns(). Throws StoreError 13 where the source
    // holds another type there.
    virtual void Read(int column, CopiedValue &value) = 0;

    // The same card's.
    virtual CardPlace Place() const { return {}; }

    // The card was copied.
    virtual void Taken() {}

    // Behind the last card: what of the source was lost or is in doubt, `taken` cards being copied. Nothing
    // where all is well.
    virtual std::optional<StoreError> DamageFound(int /*taken*/) const { return std::nullopt; }

    // German; to be told although every card was copied as it was. Mostly nothing.
    virtual QString Remark() const { return {}; }
};

} // namespace paukfix
