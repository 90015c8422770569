// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"

#include <QStringList>

namespace paukfix {

// What is asked of all cards at once, by one statement beside the cursor. All throw StoreError.

// The topics of the cards, each once, as a German dictionary orders them; none that is longer than a card of
// this program can have.
QStringList Topics(CardRecordset &cards);

// The place of the current card among `of` cards in the order of the current index, from 1; 0 where there is
// no current card.
struct CardPosition
{
    int number = 0;
    int of = 0;
};

CardPosition PlaceOfCurrent(CardRecordset &cards);

// How many cards want which kind of answer.
struct CardKinds
{
    int typed = 0;
    int typedWithMedia = 0; // of these, with a picture or a sound
    int others = 0;         // ticked ones
};

CardKinds KindsOfCards(CardRecordset &cards);

} // namespace paukfix
