// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <QByteArrayView>
#include <QVariant>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace paukfix {

using ColumnSet = std::bitset<CardColumnCount>;

// The key of a card under both indexes. Just the keys of the index that was read under are known at first.
struct CardKeys
{
    double frageNr = 0;
    double fachNr = 0;
    double fachLfdNr = 0;
};

enum class CardIndex
{
    FrageNr,
    BoxKey
};

// The engine's side of the cursor: one statement that stands on a card and can be stepped on along an index,
// and one that fetches a card by its row. Both deliver the columns they were started with. Throws
// SQLite::Exception, and StoreError for keys that are null or no numbers.
class CardScan
{
public:
    enum class Direction
    {
        Forward,
        Backward
    };
    // Where a scan begins: at the end of the index it comes from, behind a key, or at a key.
    enum class Start
    {
        End,
        Behind,
        At,
        Exactly
    };

    explicit CardScan(SQLite::Database &database) : database_(database) {}

    // Starts along `index` and steps onto the first card, if there is one. `parts` is how many parts of the
    // key count (BoxKey has two). `columns` are delivered beside the keys.
    bool Begin(CardIndex index, Direction direction, Start start, const CardKeys &key, int parts,
               const ColumnSet &columns);
    // True when Next() leads in this direction and delivers at least `columns` at little cost more.
    bool CanGoOn(Direction direction, const ColumnSet &columns) const;
    bool Next();

    std::int64_t RowId() const;
    // Fills in the part of the keys that the scan's index knows.
    void ReadKeys(CardKeys &keys) const;

    // The value of `column` of card `rowId`, from the scan where it stands on that card and delivers the
    // column, else by a fetch of `columns` (which must contain `column`).
    QVariant Value(int column, std::int64_t rowId, const ColumnSet &columns);
    // The same as the engine holds it, UTF-8, until the next step or fetch; empty for null.
    QByteArrayView Utf8(int column, std::int64_t rowId, const ColumnSet &columns);
    // What the running scan or the last fetch delivers of the card.
    bool Delivers(int column) const;

    // All three keys of card `rowId`; false when it is gone.
    bool FetchKeys(std::int64_t rowId, CardKeys &keys);

    // Ends all reading; needed before anything is written.
    void Stop();

private:
    struct Reader
    {
        SQLite::Statement *statement = nullptr; // null while stopped
        ColumnSet columns;
        std::array<int, CardColumnCount> position{}; // in the statement's result, where `columns` has it
        void Start(SQLite::Statement &prepared, const ColumnSet &delivered, int before);
        void End();
    };

    SQLite::Statement &Prepared(const std::string &sql);
    // Nothing when the card is gone.
    std::optional<SQLite::Column> Cell(int column, std::int64_t rowId, const ColumnSet &columns);

    SQLite::Database &database_;
    std::unordered_map<std::string, SQLite::Statement> prepared_;
    Reader scan_;
    Reader row_;
    CardIndex index_ = CardIndex::FrageNr;
    Direction direction_ = Direction::Forward;
    bool open_ = false; // the scan may be stepped on
};

} // namespace paukfix
