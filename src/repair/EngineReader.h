// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardCells.h"
#include "SalvagedCard.h"

#include <QString>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <memory>
#include <optional>
#include <vector>

namespace paukfix {

// The cards that the database engine itself still reads out of a damaged file: from the front until it meets
// the damage and from the back until it meets it again. It can read tables that are laid out otherwise than
// ours. Sums of pages do not count: a page that a journal gives back keeps the one that it had.
class EngineReader
{
public:
    enum class Access
    {
        ReadWrite, // what the engine holds for an unfinished transaction is rolled back in the file
        ReadOnly   // the file alone is read, whatever stands beside it
    };

    // A file that the engine refuses has no cards. Throws StoreError 3045 where this system cannot lock
    // files.
    explicit EngineReader(const QString &path, Access access = Access::ReadWrite);

    // `page` 0.
    const std::vector<CardCell> &Cards() const { return cards_; }

    std::optional<SalvagedCard> Read(std::int64_t rowid);
    // Does the engine find no fault in the file at all?
    bool FindsNoFault();

private:
    void ReadRows(const char *order);
    void PrepareReading();

    std::unique_ptr<SQLite::Database> database_;
    std::unique_ptr<SQLite::Statement> row_;
    std::array<int, CardColumnCount> columns_{}; // column of row_ by card column, -1 where the table lacks it
    std::vector<CardCell> cards_;
};

} // namespace paukfix
