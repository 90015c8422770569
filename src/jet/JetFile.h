// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace paukfix {

// Databases of the Jet engine, version 3 and 4, in which card files were kept before: numbers, pages and
// rows. The file is only ever opened for reading, and nothing here trusts it: every offset is checked.

// Numbers are stored with the low byte first. The bytes must be there.
std::uint32_t Little16(Bytes bytes, std::size_t at);
std::uint32_t Little32(Bytes bytes, std::size_t at);
double LittleDouble(Bytes bytes, std::size_t at);

// In what the versions differ.
struct JetLayout
{
    // Pages and rows: sizes in bytes, where the number of rows stands in a data page, and the size of a
    // count or offset in a row and of a name's length.
    std::size_t pageSize, headerCode, password, rowCount, unit;
    // A table's definition: where its parts stand, and the size of what it says of an index.
    std::size_t rows, mostColumns, variables, columns, realIndexes, usageMap, indexes, indexSize;
    // What it says of a column: its size, and where the parts of that stand.
    std::size_t columnSize, columnNumber, columnVariable, columnFlags, columnOffset;

    std::uint32_t Unit(Bytes bytes, std::size_t at) const
    {
        return unit == 1 ? bytes[at] : Little16(bytes, at);
    }
};

// Where a row stands; the file writes it as one number.
struct JetPlace
{
    std::uint32_t page = 0;
    std::uint32_t row = 0;

    static JetPlace Of(std::uint32_t pointer) { return {pointer >> 8U, pointer & 0xFFU}; }
};

struct JetRow
{
    std::uint32_t owner = 0; // first page of the definition of the table that owns the page
    bool deleted = false;    // or the new place of a row that was moved
    bool moved = false;      // the bytes are a pointer to the row's new place
    std::vector<std::uint8_t> bytes;
};

// An open database. Its owner reads it page by page; a few pages are kept.
class JetFile
{
public:
    // The owner of pages that hold parts of long texts.
    static constexpr std::uint32_t LongValues = 0x4C41564C;

    // Throws StoreError: 53, 76, 3051 where it cannot be opened, 3031 for a file with a password, 3343 for an
    // encrypted one, for another version than 3 and 4 and for another code page than Windows-1252.
    explicit JetFile(const QString &path);

    const QString &Path() const { return path_; }

    std::int64_t Size() const { return size_; }

    // Version 4 keeps texts in Unicode, version 3 in Windows-1252.
    bool IsVersion4() const { return version4_; }

    const JetLayout &Layout() const;

    std::uint32_t PageCount() const { return pageCount_; }

    // The page, valid until the next call of any method; zeros for what the file lacks or the disk does not
    // give.
    Bytes Page(std::uint32_t number);

    // How many rows the page has, 0 where it is no data page.
    std::uint32_t RowCount(std::uint32_t page);
    // Nothing where the page has no such row or its bytes are outside the page.
    std::optional<JetRow> Row(JetPlace place);

    // Throws StoreError 3049.
    [[noreturn]] void ThrowDamaged() const;

private:
    void CheckHeader();

    struct Slot
    {
        std::uint64_t number = ~std::uint64_t{0}; // no page's
        std::vector<std::uint8_t> bytes;
    };

    QString path_;
    FileHandle file_;
    std::int64_t size_ = 0;
    bool version4_ = false;
    std::uint32_t pageCount_ = 0;
    std::array<Slot, 64> slots_;
};

} // namespace paukfix
