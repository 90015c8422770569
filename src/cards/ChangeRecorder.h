// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardChanges.h"

#include <functional>

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

private:
    static void Changing(void *recorder, sqlite3 *database, int kind, const char *schema, const char *table,
                         long long rowBefore, long long rowAfter);

    void Note(sqlite3 *database, int kind, long long row);

    SQLite::Database &database_;
    CardChanges &into_;
    std::function<void()> first_;
};

} // namespace paukfix
