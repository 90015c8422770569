// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardChanges.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <cstring>
#include <set>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace paukfix {

namespace {

using Cell = CardChanges::Cell;
using Row = CardChanges::Row;
using Value = CardChanges::Value;

template <class Number>
void Put(std::string &packed, Number number)
{
    static_assert(std::is_trivially_copyable_v<Number>);
    packed.append(reinterpret_cast<const char *>(&number), sizeof number);
}

void Put(std::string &packed, const std::string &bytes)
{
    Put(packed, static_cast<std::uint32_t>(bytes.size()));
    packed += bytes;
}

void Put(std::string &packed, const Value &value)
{
    packed += static_cast<char>(value.index());
    std::visit(
        [&](const auto &held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<Held>)
                Put(packed, held);
            else if constexpr (!std::is_same_v<Held, std::monostate>)
                Put(packed, held.bytes);
        },
        value);
}

// Takes numbers and texts out of the packed form, in the order in which they were put in.
class Unpacker
{
public:
    explicit Unpacker(const char *at) : at_(at) {}

    template <class Number>
    Number Take()
    {
        Number number;
        std::memcpy(&number, at_, sizeof number);
        at_ += sizeof number;
        return number;
    }

    std::string TakeBytes()
    {
        const auto size = Take<std::uint32_t>();
        std::string bytes(at_, size);
        at_ += size;
        return bytes;
    }

    Value TakeValue()
    {
        switch (Take<char>()) {
        case 1:
            return Take<std::int64_t>();
        case 2:
            return Take<double>();
        case 3:
            return CardChanges::Text{TakeBytes()};
        case 4:
            return CardChanges::Blob{TakeBytes()};
        default:
            return {};
        }
    }

private:
    const char *at_;
};

void BindValue(SQLite::Statement &statement, int parameter, const Value &value)
{
    std::visit(
        [&](const auto &held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                statement.bind(parameter);
            else if constexpr (std::is_same_v<Held, CardChanges::Blob>)
                statement.bindNoCopy(parameter, held.bytes.data(), static_cast<int>(held.bytes.size()));
            else if constexpr (std::is_same_v<Held, CardChanges::Text>)
                statement.bindNoCopy(parameter, held.bytes);
            else
                statement.bind(parameter, held);
        },
        value);
}

// `bytes` were asked for before their count: a text may be converted.
std::string_view Bytes(const void *bytes, const SQLite::Column &column)
{
    return {static_cast<const char *>(bytes), static_cast<std::size_t>(column.getBytes())};
}

bool Holds(const SQLite::Column &column, const Value &value)
{
    return std::visit(
        [&](const auto &held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                return column.isNull();
            else if constexpr (std::is_same_v<Held, std::int64_t>)
                return column.isInteger() && column.getInt64() == held;
            else if constexpr (std::is_same_v<Held, double>)
                return column.isFloat() && column.getDouble() == held;
            else if constexpr (std::is_same_v<Held, CardChanges::Text>)
                return column.isText() && Bytes(column.getText(), column) == held.bytes;
            else
                return column.isBlob() && Bytes(column.getBlob(), column) == held.bytes;
        },
        value);
}

// The statements on single rows of the cards, each prepared once.
class RowStatements
{
public:
    explicit RowStatements(SQLite::Database &database) : database_(database)
    {
        SQLite::Statement columns(database, "SELECT name FROM pragma_table_info('Lernkarten') ORDER BY cid");
        while (columns.executeStep()) {
            std::string name = "\"";
            for (const char letter : columns.getColumn(0).getString())
                name += letter == '"' ? "\"\"" : std::string(1, letter);
            names_.push_back(name + '"');
        }
    }

    // All columns of the table.
    std::vector<Cell> Columns() const
    {
        std::vector<Cell> all(names_.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i].column = static_cast<int>(i);
        return all;
    }

    // The bytes that the values of `cells` have.
    std::string Lengths(const std::vector<Cell> &cells) const
    {
        std::string sum = "0";
        for (const Cell &cell : cells)
            sum +=
                "+ifnull(length(CAST(" + names_.at(static_cast<std::size_t>(cell.column)) + " AS BLOB)),0)";
        return sum;
    }

    // The columns of `cells`, each with `behind` behind its name.
    std::string List(const std::vector<Cell> &cells, const char *behind = "") const
    {
        std::string list;
        for (const Cell &cell : cells)
            list += (list.empty() ? "" : ",") + names_.at(static_cast<std::size_t>(cell.column)) + behind;
        return list;
    }

    SQLite::Statement &Prepared(const std::string &sql)
    {
        auto found = statements_.find(sql);
        if (found == statements_.end())
            found = statements_.emplace(sql, SQLite::Statement(database_, sql)).first;
        found->second.tryReset();
        return found->second;
    }

private:
    SQLite::Database &database_;
    std::vector<std::string> names_;
    std::unordered_map<std::string, SQLite::Statement> statements_;
};

void TakeBackRow(RowStatements &rows, const Row &row)
{
    std::string sql;
    switch (row.kind) {
    case CardChanges::Kind::Added:
        sql = R"(DELETE FROM "Lernkarten" WHERE _rowid_=?)";
        break;
    case CardChanges::Kind::Changed:
        sql = R"(UPDATE OR ABORT "Lernkarten" SET )" + rows.List(row.before, "=?") + " WHERE _rowid_=?";
        break;
    case CardChanges::Kind::Deleted:
        sql = R"(INSERT OR ABORT INTO "Lernkarten"()" + rows.List(row.before) + ",_rowid_) VALUES(";
        for (std::size_t i = 0; i < row.before.size(); ++i)
            sql += "?,";
        sql += "?)";
        break;
    }
    SQLite::Statement &statement = rows.Prepared(sql);
    int parameter = 0;
    for (const Cell &cell : row.before)
        BindValue(statement, ++parameter, cell.value);
    statement.bind(++parameter, row.id);
    statement.exec();
}

// `row` as it is before the changes, of which only those of `cells` are known.
bool StandsSo(RowStatements &rows, const Row &row, const std::vector<Cell> &cells)
{
    std::string sql = "SELECT 0";
    if (!cells.empty())
        sql += ',' + rows.List(cells);
    SQLite::Statement &statement = rows.Prepared(sql + R"( FROM "Lernkarten" WHERE _rowid_=?)");
    statement.bind(1, row.id);
    const bool there = statement.executeStep();
    bool same = there == (row.kind != CardChanges::Kind::Added);
    for (std::size_t i = 0; same && there && i < cells.size(); ++i)
        same = Holds(statement.getColumn(static_cast<int>(i) + 1), cells[i].value);
    statement.tryReset();
    return same;
}

} // namespace

void CardChanges::Add(const Row &row)
{
    if (!whole_)
        return;
    const std::size_t begin = packed_.size();
    packed_ += static_cast<char>(row.kind);
    Put(packed_, row.id);
    Put(packed_, static_cast<std::uint32_t>(row.before.size()));
    for (const Cell &cell : row.before) {
        Put(packed_, static_cast<std::int32_t>(cell.column));
        Put(packed_, cell.value);
    }
    begins_.push_back(static_cast<std::uint32_t>(begin));
    if (Bytes() > MaxBytes) {
        packed_.resize(begin);
        begins_.pop_back();
        whole_ = false;
    }
}

Row CardChanges::At(std::size_t i) const
{
    Unpacker unpacker(packed_.data() + begins_.at(i));
    Row row;
    row.kind = static_cast<Kind>(unpacker.Take<char>());
    row.id = unpacker.Take<std::int64_t>();
    row.before.resize(unpacker.Take<std::uint32_t>());
    for (Cell &cell : row.before) {
        cell.column = unpacker.Take<std::int32_t>();
        cell.value = unpacker.TakeValue();
    }
    return row;
}

void TakeBack(SQLite::Database &database, const CardChanges &changes)
{
    RowStatements rows(database);
    for (std::size_t i = changes.Count(); i-- > 0;)
        TakeBackRow(rows, changes.At(i));
}

std::size_t BytesToRepeat(SQLite::Database &database, const CardChanges &changes)
{
    constexpr std::size_t RowNeeds = 17, CellNeeds = 9; // beside the values, as Add packs them
    RowStatements rows(database);
    const std::vector<Cell> all = rows.Columns();
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < changes.Count() && bytes <= CardChanges::MaxBytes; ++i) {
        const Row row = changes.At(i);
        bytes += RowNeeds;
        if (row.kind == CardChanges::Kind::Deleted)
            continue;
        const std::vector<Cell> &cells = row.kind == CardChanges::Kind::Added ? all : row.before;
        SQLite::Statement &statement =
            rows.Prepared("SELECT " + rows.Lengths(cells) + R"( FROM "Lernkarten" WHERE _rowid_=?)");
        statement.bind(1, row.id);
        if (statement.executeStep())
            bytes += cells.size() * CellNeeds + static_cast<std::size_t>(statement.getColumn(0).getInt64());
        statement.tryReset();
    }
    return bytes;
}

bool StandAsBefore(SQLite::Database &database, const CardChanges &changes)
{
    RowStatements rows(database);
    // A row that was touched again stood before as it stood at the first time.
    std::set<std::int64_t> known;
    std::set<std::pair<std::int64_t, int>> knownCells;
    for (std::size_t i = 0; i < changes.Count(); ++i) {
        const Row row = changes.At(i);
        if (known.contains(row.id))
            continue;
        std::vector<Cell> cells;
        for (const Cell &cell : row.before)
            if (knownCells.emplace(row.id, cell.column).second)
                cells.push_back(cell);
        if (row.kind != CardChanges::Kind::Changed)
            known.insert(row.id);
        if (!StandsSo(rows, row, cells))
            return false;
    }
    return true;
}

} // namespace paukfix
