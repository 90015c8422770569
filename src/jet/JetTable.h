// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "JetFile.h"

#include <QString>

#include <optional>
#include <vector>

namespace paukfix {

// Those that card files and the catalogue use.
enum class JetType : std::uint8_t
{
    Flag = 1,
    Integer = 3,
    Long = 4,
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

// A row split into its values.
class JetRecord
{
public:
    // Nothing where no row of a table with at most `mostColumns` can be stored so.
    static std::optional<JetRecord> Of(std::vector<std::uint8_t> row, const JetLayout &layout,
                                       bool hasVariables, std::uint32_t mostColumns);

    // Is there a value? Of a truth value this is all there is.
    bool Has(const JetColumn &column) const;

    // The bytes of a value that is there; nothing where they cannot be where the row says.
    std::optional<Bytes> Value(const JetColumn &column) const;

    // Nothing for null and where there is no number.
    std::optional<double> Number(const JetColumn &column) const;

private:
    std::size_t VariableOffset(std::uint32_t variable) const;

    std::vector<std::uint8_t> row_;
    const JetLayout *layout_ = nullptr;
    std::uint32_t columns_ = 0;
    std::uint32_t variables_ = 0;
    std::size_t jumps_ = 0;     // version 3: entries of the jump table
    std::size_t maskAt_ = 0;    // the null mask
    std::size_t valuesEnd_ = 0; // behind the last byte that values may take
};

// A text out of a row. `whole` is false where it breaks off.
struct JetText
{
    QString text;
    bool whole = false;
};

// One table of the database.
class JetTable
{
public:
    // The table whose definition begins in this page. Throws StoreError 3049 where that is damaged. `file`
    // must outlive the table.
    JetTable(JetFile &file, std::uint32_t definition);

    // Can a definition begin in this page, or go on?
    static bool IsDefinition(JetFile &file, std::uint32_t page);

    const JetColumn *Column(QStringView name) const;

    // How many rows the table says that it has.
    std::uint32_t DeclaredRows() const { return declaredRows_; }

    // Where the rows stand that were not deleted, moved ones at their new place, each once. At most 65,536.
    std::vector<JetPlace> Rows();
    std::optional<JetRecord> Record(JetPlace place);

    // The text of a value that is there; each is meant to be read once. All texts read through one table are
    // together not longer than the file: more only a forged file asks for.
    JetText Text(const JetRecord &record, const JetColumn &column);

private:
    std::vector<std::uint8_t> Definition();
    std::vector<std::uint32_t> MappedPages(Bytes map);
    std::vector<JetPlace> RowsIn(const std::vector<std::uint32_t> &pages);
    std::optional<JetPlace> Follow(JetPlace place);
    std::vector<std::uint8_t> MemoBytes(Bytes value, bool &whole);
    std::optional<std::vector<std::uint8_t>> LongValue(std::uint32_t pointer);
    bool Take(std::size_t bytes);

    JetFile &file_;
    const JetLayout &layout_;
    std::uint32_t definition_;
    std::uint32_t declaredRows_ = 0;
    std::uint32_t mostColumns_ = 0;
    std::uint32_t usageMap_ = 0; // pointer to the row that tells which pages the table owns
    bool hasVariables_ = false;
    std::vector<JetColumn> columns_;
    std::int64_t textBytesLeft_;
};

} // namespace paukfix
