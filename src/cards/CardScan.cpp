// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardScan.h"

#include "CardValue.h"

#include <utility>

namespace paukfix {

namespace {

std::string ColumnList(const ColumnSet &columns)
{
    std::string list;
    for (int i = 0; i < CardColumnCount; ++i)
        if (columns[static_cast<std::size_t>(i)])
            list += ',' + QuotedColumn(i);
    return list;
}

} // namespace

void CardScan::Reader::Start(SQLite::Statement &prepared, const ColumnSet &delivered, int before)
{
    statement = &prepared;
    columns = delivered;
    for (std::size_t i = 0; i < CardColumnCount; ++i)
        if (columns[i])
            position[i] = before++;
}

SQLite::Statement &CardScan::Prepared(const std::string &sql)
{
    constexpr std::size_t Most = 64;
    auto found = prepared_.find(sql);
    if (found == prepared_.end()) {
        if (prepared_.size() >= Most) {
            Stop();
            prepared_.clear();
        }
        found = prepared_.emplace(sql, SQLite::Statement(database_, sql)).first;
    }
    found->second.tryReset(); // reset() would tell the last run's error again
    return found->second;
}

bool CardScan::Begin(CardIndex index, Direction direction, Start start, const CardKeys &key, int parts,
                     const ColumnSet &columns)
{
    Stop();
    const bool forward = direction == Direction::Forward;
    const bool box = index == CardIndex::BoxKey;
    const char *compare = start == Start::Exactly  ? "="
                          : start == Start::Behind ? (forward ? ">" : "<")
                                                   : (forward ? ">=" : "<=");
    std::string sql = "SELECT _rowid_,";
    sql += box ? R"("FachNr","FachLfdNr")" : R"("FrageNr")";
    sql += ColumnList(columns);
    sql += box ? R"( FROM "Lernkarten" INDEXED BY "BoxKey")" : R"( FROM "Lernkarten" INDEXED BY "FrageNr")";
    if (start != Start::End) {
        sql += " WHERE ";
        if (!box)
            sql += R"("FrageNr")" + std::string(compare) + "?1";
        else if (parts == 1)
            sql += R"("FachNr")" + std::string(compare) + "?1";
        else
            sql += R"(("FachNr","FachLfdNr"))" + std::string(compare) + "(?1,?2)";
    }
    const std::string order = forward ? " ASC" : " DESC";
    sql +=
        box ? R"( ORDER BY "FachNr")" + order + R"(,"FachLfdNr")" + order : R"( ORDER BY "FrageNr")" + order;

    SQLite::Statement &statement = Prepared(sql);
    if (start != Start::End) {
        statement.bind(1, box ? key.fachNr : key.frageNr);
        if (box && parts == 2)
            statement.bind(2, key.fachLfdNr);
    }
    index_ = index;
    direction_ = direction;
    open_ = start != Start::Exactly;
    scan_.Start(statement, columns, box ? 3 : 2);
    return Next();
}

bool CardScan::CanGoOn(Direction direction, const ColumnSet &columns) const
{
    // A scan that delivers columns nobody reads any more is left for a leaner one.
    return open_ && scan_.statement && direction_ == direction && (columns & ~scan_.columns).none() &&
           (columns.any() || scan_.columns.none());
}

// A statement that stands on a card keeps its pages, and with them a failure of the disk, until it is reset.
void CardScan::Reader::End()
{
    if (SQLite::Statement *running = std::exchange(statement, nullptr))
        running->tryReset();
}

bool CardScan::Next()
{
    row_.End();
    if (scan_.statement->executeStep())
        return true;
    Stop();
    return false;
}

std::int64_t CardScan::RowId() const
{
    return scan_.statement->getColumn(0).getInt64();
}

void CardScan::ReadKeys(CardKeys &keys) const
{
    if (index_ == CardIndex::BoxKey) {
        keys.fachNr = KeyValue(scan_.statement->getColumn(1), ColFachNr);
        keys.fachLfdNr = KeyValue(scan_.statement->getColumn(2), ColFachLfdNr);
    } else {
        keys.frageNr = KeyValue(scan_.statement->getColumn(1), ColFrageNr);
    }
}

bool CardScan::Delivers(int column) const
{
    const auto bit = static_cast<std::size_t>(column);
    return (scan_.statement && scan_.columns[bit]) || (row_.statement && row_.columns[bit]);
}

std::optional<SQLite::Column> CardScan::Cell(int column, std::int64_t rowId, const ColumnSet &columns)
{
    const auto bit = static_cast<std::size_t>(column);
    if (scan_.statement && scan_.columns[bit])
        return scan_.statement->getColumn(scan_.position[bit]);
    if (!row_.statement || !row_.columns[bit]) {
        row_.End();
        SQLite::Statement &statement =
            Prepared("SELECT 0" + ColumnList(columns) + R"( FROM "Lernkarten" WHERE _rowid_=?1)");
        statement.bind(1, rowId);
        row_.Start(statement, columns, 1);
        if (!statement.executeStep()) {
            row_.End();
            return std::nullopt;
        }
    }
    return row_.statement->getColumn(row_.position[bit]);
}

QVariant CardScan::Value(int column, std::int64_t rowId, const ColumnSet &columns)
{
    const std::optional<SQLite::Column> cell = Cell(column, rowId, columns);
    return cell ? FromEngine(*cell, column) : QVariant();
}

QByteArrayView CardScan::Utf8(int column, std::int64_t rowId, const ColumnSet &columns)
{
    const std::optional<SQLite::Column> cell = Cell(column, rowId, columns);
    if (!cell)
        return {};
    const char *text = cell->getText(); // before getBytes(): it converts numbers
    return {text, cell->getBytes()};
}

bool CardScan::FetchKeys(std::int64_t rowId, CardKeys &keys)
{
    SQLite::Statement &row =
        Prepared(R"(SELECT "FrageNr","FachNr","FachLfdNr" FROM "Lernkarten" WHERE _rowid_=?1)");
    row.bind(1, rowId);
    const bool found = row.executeStep();
    if (found)
        keys = {KeyValue(row.getColumn(0), ColFrageNr), KeyValue(row.getColumn(1), ColFachNr),
                KeyValue(row.getColumn(2), ColFachLfdNr)};
    row.reset();
    return found;
}

void CardScan::Stop()
{
    scan_.End();
    row_.End();
    open_ = false;
}

} // namespace paukfix
