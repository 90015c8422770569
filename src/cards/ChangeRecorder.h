// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardChanges.h"

#include <functional>
#include <vector>

struct sqlite3;
struct sqlite3_value;

namespace SQLite {
class Database;
}

namespace paukfix {

// Notes what the engine changes in the cards of a database, whoever writes and by whatever statement, as long
// as it lives. What a rollback takes back is noted all the same: `StandAsBefore` tells.
class ChangeRecorder
{
public:
    // `into` gets the changes, behind those that it has; `first` is called before the first one of an empty
    // `into`. All must outlive it.
    ChangeRecorder(SQLite::Database &database, CardChanges &into, std::function<void()> first);
    ChangeRecorder(const ChangeRecorder &) = delete;
    ChangeRecorder &operator=(const ChangeRecorder &) = delete;
    ~ChangeRecorder();

    // As long as one lives, the updates of the database write compartment and running number of cards and
    // nothing else, so that nothing else need be compared: for work on many cards.
    class OnlyPlaces
    {
    public:
        explicit OnlyPlaces(SQLite::Database &database);
        OnlyPlaces(const OnlyPlaces &) = delete;
        OnlyPlaces &operator=(const OnlyPlaces &) = delete;
        ~OnlyPlaces();

    private:
        ChangeRecorder *recorder_; // of the database, where there is one
    };

private:
    static void Changing(void *recorder, sqlite3 *database, int kind, const char *schema, const char *table,
                         long long rowBefore, long long rowAfter);

    void Note(sqlite3 *database, int kind, long long row);

    SQLite::Database &database_;
    CardChanges &into_;
    std::function<void()> first_;
    std::vector<int> all_, places_; // columns of the table
    bool onlyPlaces_ = false;
};

} // namespace paukfix
