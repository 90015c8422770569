// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "JetFile.h"

#include <QString>

#include <optional>
#include <unordered_set>
#include <vector>

enum class JetType : std::uint8_t
{
    Flag = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Single = 6,
    Double = 7,
    Text = 10,
    Memo = 12
};

struct JetColumn
{
    QString name;
    JetType type{};
    bool fixed = false;
    std::uint32_t number = 0;   // its bit in the null mask
    std::uint32_t offset = 0;   // fixed: place among the fixed values of a row
    std::uint32_t variable = 0; // else: place in the row's offset table
    std::uint32_t codePage = 0; // version 3, of texts; 0 where none is said
};

// One value of a row as it is stored.
struct JetValue
{
    enum class State : std::uint8_t
    {
        Null,
        Broken, // it cannot be where the row says it is
        There
    };
    State state = State::Null;
    Bytes bytes;
};

// A text out of a row. `whole` is false where it breaks off.
struct JetText
{
    QString text;
    bool whole = true;
};

// A row split into its values. Refers to the row's bytes.
class JetRecord
{
public:
    // Nothing where no row of a table with at most `mostColumns` can be stored so.
    static std::optional<JetRecord> Of(Bytes row, bool version4, bool hasVariables,
                                       std::uint32_t mostColumns);

    JetValue Value(const JetColumn &column) const;

    // A truth value has no bytes of its own.
    bool Flag(const JetColumn &column) const { return IsSet(column.number); }

    // Nothing for null and where there is no number.
    std::optional<double> Number(const JetColumn &column) const;

private:
    bool IsSet(std::uint32_t column) const;
    std::size_t VariableOffset(std::uint32_t variable) const;

    Bytes row_;
    bool version4_ = false;
    std::uint32_t columns_ = 0;
    std::uint32_t variables_ = 0;
    std::uint32_t jumps_ = 0;   // version 3: entries of the jump table
    std::size_t maskAt_ = 0;    // the null mask
    std::size_t valuesEnd_ = 0; // behind the last byte that values may take
};

// One table of the database.
class JetTable
{
public:
    // The table whose definition begins in this page. Throws StoreError 3049 where that is damaged. `file`
    // must outlive the table.
    JetTable(JetFile &file, std::uint32_t definition);

    // The page of the definition of the table with this name, nothing where the database has none. Throws
    // StoreError 3049 where the catalogue is damaged and `looksLike` finds no table in the pages either.
    static std::optional<std::uint32_t> Find(JetFile &file, QStringView name,
                                             bool (*looksLike)(const JetTable &table));

    const JetColumn *Column(QStringView name) const;

    // How many rows the table says that it has.
    std::uint32_t DeclaredRows() const { return declaredRows_; }

    // Where the rows stand that were not deleted, moved ones at their new place, each once. At most 65,536.
    std::vector<JetPlace> Rows();
    // The bytes of a row; empty where it is not there.
    std::vector<std::uint8_t> RowBytes(JetPlace place);
    std::optional<JetRecord> Split(Bytes row) const;

    // The text of a value. All memos read through one table together are not longer than the file: more only
    // a forged file asks for.
    JetText Text(const JetColumn &column, Bytes value);

private:
    std::vector<std::uint8_t> Definition(std::uint32_t page);
    std::vector<std::uint32_t> MappedPages(Bytes map);
    std::vector<JetPlace> RowsIn(const std::vector<std::uint32_t> &pages);
    std::optional<JetPlace> Follow(std::uint32_t pointer);
    std::vector<std::uint8_t> MemoBytes(Bytes value, bool &whole);
    std::optional<Bytes> LongValue(JetPlace place);

    JetFile &file_;
    std::uint32_t definition_;
    std::uint32_t declaredRows_ = 0;
    std::uint32_t mostColumns_ = 0;
    std::uint32_t usageMap_ = 0; // pointer to the row that tells which pages the table owns
    bool hasVariables_ = false;
    std::vector<JetColumn> columns_;
    std::int64_t memoBytesLeft_;
};
