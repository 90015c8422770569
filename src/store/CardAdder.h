// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardAdd.h"
#include "CardSource.h"

#include <SQLiteCpp/Statement.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace paukfix {

// Stores new cards one by one in the open transaction of a box, leaves out or renews those that the box has,
// and notes what became of each. Throws SQLite::Exception only where the engine has given the transaction up.
class CardAdder
{
public:
    // Value i of a card goes into `columns[i]`; `store`, `database` and `added` must outlive it.
    CardAdder(CardStore &store, SQLite::Database &database, AddedCards &added,
              const std::vector<int> &columns, Vorhandene vorhandene);

    // The next card has come: what is noted is about it.
    void Begin() { ++number_; }

    // Stores a card of this content: `bind` gives its values to the statement that is run, value i as
    // parameter FirstValue + i; they must last until this returns. False when no further card can be added.
    bool Store(const std::function<Karteninhalt()> &content, const CardPlace &place,
               const std::function<void(SQLite::Statement &)> &bind);

    static constexpr int FirstValue = 4; // behind card number, running number and compartment

    void Note(const StoreError &error);

    // What is noted from now on is about no card.
    void AllStored() { number_ = -1; }

private:
    bool Bound(SQLite::Statement &statement, const std::function<void(SQLite::Statement &)> &bind,
               const std::function<void()> &work);
    void Add(const CardPlace &place);
    bool AddAsItWas(const CardPlace &place);
    void Insert(qint16 number, qint16 lfdNr, int fach);
    bool TakeNote(const SQLite::Exception &error);

    CardStore &store_;
    SQLite::Database &database_;
    AddedCards &added_;
    SQLite::Statement insert_;
    bool wasEmpty_;
    int number_ = -1; // of the card that is stored, as they come, from 0
    std::optional<Kartenabgleich> known_;
    std::optional<SQLite::Statement> renew_;
};

} // namespace paukfix
