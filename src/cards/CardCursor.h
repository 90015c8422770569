// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardFile.h"
#include "CardScan.h"
#include "StoreError.h"

#include <QVariant>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace paukfix {

// The edit buffer, while an Edit or AddNew is under way.
struct EditBuffer
{
    bool adding = false;
    std::array<QVariant, CardColumnCount> values;
    ColumnSet written;
};

inline std::size_t Bit(int column)
{
    return static_cast<std::size_t>(column);
}

[[noreturn]] void ThrowNoCurrent(); // 3021

// What stands behind the recordset: where its cursor is, what it reads there, and how its edit buffer gets
// into the card file. The recordset's methods, which hold the manners, work on it directly; nobody else sees
// it.
struct CardCursor
{
    enum class Place
    {
        Empty, // no cards: both ends at once
        BeforeFirst,
        OnCard,
        OnDeleted, // on the place of a deleted card
        AfterLast,
    };

    explicit CardCursor(CardFile &cardFile);

    CardFile &file;
    SQLite::Database &database;
    CardScan scan;
    ColumnSet available;
    CardIndex index = CardIndex::FrageNr;
    Place place = Place::Empty;
    bool beforeFirstCardAdded = false; // in a file that was empty, until the next move
    std::int64_t rowId = 0;
    CardKeys keys;        // of the current or deleted card; only those of `index` count...
    bool allKeys = false; // ...unless this is set
    bool noMatch = false;
    bool inTransaction = false;
    std::optional<EditBuffer> buffer;
    // What is read on this card, and was on the last card on which anything was read: the next scan and the
    // next fetch deliver just that.
    ColumnSet readHere;
    ColumnSet readBefore;
    std::unordered_map<std::string, SQLite::Statement> writes; // the writing statements met so far

    // Runs a step; an engine error ends all reading and becomes a StoreError. The engine may have given up a
    // whole transaction: then the cursor finds its card again as it is stored.
    template <class Step>
    auto Guarded(Step step)
    {
        try {
            return step();
        } catch (const SQLite::Exception &error) {
            scan.Stop();
            if (inTransaction && sqlite3_get_autocommit(database.getHandle()) != 0) {
                inTransaction = false;
                buffer.reset();
                FollowCard();
            }
            file.ForgetState();
            ThrowStoreError(error, file.Path());
        }
    }

    void Arrive(); // where the scan is
    bool HasCards();

    // Every move drops the edit buffer and says which columns the next card should bring.
    ColumnSet BeginMove();
    void MoveToEnd(CardScan::Direction from);
    void Move(CardScan::Direction direction);

    // Needed before the index changes and before the card goes.
    void LoadAllKeys();

    // Notes that the column is read; returns what a fetch of the card should bring.
    ColumnSet Reading(int column);
    QVariant Stored(int column);

    // After a rollback: the card may be another's, at another place, or gone.
    void FindCardAgain();

    // The same after a failure of the disk, which may be broken altogether. Keeps the edit buffer.
    void FollowCard() noexcept;

    // Runs one writing statement; outside a transaction it is durable when this returns.
    void Write(const std::string &sql, const std::vector<QVariant> &parameters);

    void InsertBuffer();
    void UpdateFromBuffer();
};

} // namespace paukfix
