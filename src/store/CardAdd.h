// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Kartenabgleich.h"
#include "Progress.h"
#include "StoreError.h"

#include <QString>

#include <functional>
#include <vector>

namespace paukfix {

class CardSource;

// Many new cards at once for the open card file: they take the next card numbers and the next running numbers
// of compartment 0, or of the one that they come from where that is wanted, in the order in which they come,
// and HighestCardNumber, LfdMax and Anzahl follow each card that is stored. Where the running numbers would
// pass 16 bits, the compartment is closed up first.
//
// Both want an open transaction of the recordset. They throw StoreError only where the engine has given the
// transaction up; whatever else goes wrong is told in the result, and the cards stored so far are to be kept.

struct AddedCards
{
    int count = 0;   // added
    int leftOut = 0; // as the box had them already
    int renewed = 0; // cards of the box that have got another answer
    // Each kind once. 6: the card numbers or compartment 0 are full, nothing more was added. A value that a
    // card cannot hold (3163, 6 with the field's name, 13) is left out of its card, a card that cannot be
    // stored is left out whole; any other error ended the adding.
    std::vector<StoreError> errors;
    std::vector<int> faulty; // the cards that these are about, as they came, from 0
    // German; to be told although all went well: the source is damaged, but gave every card as it was. Never
    // beside errors.
    QString remark;
};

struct SimpleCard
{
    QString question, answer, topic; // what is empty stays unset
};

// Adds cards with a typed answer, formatted and plain text the same, until `next` has none. In a file that
// was empty the cursor then stands on the first of them.
AddedCards AddSimpleCards(CardStore &store, const std::function<bool(SimpleCard &card)> &next,
                          Vorhandene vorhandene = Vorhandene::Uebernehmen);

// Adds copies of the cards of `source`, in its order. A value that the source holds in another type than a
// card can (13) is left out of its card; what damage has taken away or left in doubt is told as error 3049. A
// card whose answer is renewed gets texts and ticks, and those pictures and sounds that the new one has.
AddedCards CopyAllCards(CardStore &store, CardSource &source, const Progress &progress = {},
                        Vorhandene vorhandene = Vorhandene::Uebernehmen);

} // namespace paukfix
