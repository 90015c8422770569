// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TolerantRead.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace paukfix {

// The file format of SQLite, read without the engine: numbers, pages and the cells of b-tree pages, as
// https://www.sqlite.org/fileformat2.html describes them. Nothing here trusts the file: every offset is
// checked.

inline constexpr std::uint32_t MinPageSize = 512;
inline constexpr std::uint32_t MaxPageSize = 65536;
// The engine's own limit of one record, in bytes.
inline constexpr std::uint64_t MaxPayload = 1'000'000'000;

std::uint32_t Big16(Bytes bytes, std::size_t at);
std::uint32_t Big32(Bytes bytes, std::size_t at);
// Length of the variable-length number at `at`, 1 to 9; 0 where it leaves the bytes.
std::uint32_t ReadVarint(Bytes bytes, std::size_t at, std::uint64_t &value);
bool AllZero(Bytes bytes);

// The number that a record's value with this serial type stands for; nothing for null, texts and
// not-a-number.
std::optional<double> RecordNumber(std::uint64_t serialType, Bytes value);
bool IsNumberType(std::uint64_t serialType);
bool IsTextType(std::uint64_t serialType);
// Bytes that a value of this serial type takes in the record.
std::uint64_t SerialSize(std::uint64_t serialType);

struct PageGeometry
{
    std::uint32_t pageSize = 4096;
    std::uint32_t usable = 4096; // page size without the reserved bytes at its end
    bool hasSums = false;        // pages end in their checksums, and one at least fits
};

// Reads whole pages of an open file, whatever its state.
class PageReader
{
public:
    // `file` is a descriptor that must stay open; `size` is the file's length in bytes.
    PageReader(int file, std::int64_t size, PageGeometry geometry);

    // Page `number`, counted from 1, into `buffer`. What the file lacks or the disk does not give reads as
    // zeros.
    Bytes Read(std::uint32_t number, std::vector<std::uint8_t> &buffer) const;

    std::uint32_t PageCount() const { return pageCount_; }

    const PageGeometry &Geometry() const { return geometry_; }

    // Bytes of the page that the file has; less than a page only at the end of a file that was cut.
    std::uint32_t Present(std::uint32_t number) const;

    // The next page after `number` that is not wholly a hole of the file; 0 behind the last one.
    std::uint32_t NextPage(std::uint32_t number) const;

    // Can `number` be a page other than the first?
    bool IsInner(std::uint32_t number) const { return number > 1 && number <= pageCount_; }

private:
    int file_;
    std::int64_t size_;
    PageGeometry geometry_;
    std::uint32_t pageCount_;
    std::vector<DataPart> parts_;
};

// A row of a table as its leaf page holds it.
struct LeafCell
{
    std::int64_t rowid = 0;
    std::uint64_t payload = 0;   // length of the record
    std::uint32_t local = 0;     // where its first part begins in the page
    std::uint32_t localSize = 0; // length of that part
    std::uint32_t overflow = 0;  // page that holds the next part, 0 where the record ends here
    std::uint32_t end = 0;       // first byte behind the cell
};

// The cell at `at` of a table leaf page; nothing where no cell can be there.
std::optional<LeafCell> ReadLeafCell(Bytes page, std::uint32_t usable, std::uint32_t at);

enum class PageKind : std::uint8_t
{
    Other = 0,
    IndexInterior = 2,
    TableInterior = 5,
    IndexLeaf = 10,
    TableLeaf = 13
};

// What the free blocks of a page hold.
enum class FreeSpace : std::uint8_t
{
    Unknown, // none is large enough to tell
    Wiped,
    Left // what was deleted lies there still
};

// A b-tree page seen through its header.
class BTreePage
{
public:
    // `bytes` is the whole page and must outlive this view.
    BTreePage(Bytes bytes, std::uint32_t number, const PageGeometry &geometry);

    PageKind Kind() const { return kind_; }

    bool IsInterior() const { return kind_ == PageKind::TableInterior || kind_ == PageKind::IndexInterior; }

    // Where the cells that the page points to begin, in the page's order; pointers that lead nowhere are left
    // out.
    std::vector<std::uint32_t> CellOffsets() const;

    // Length of the cell at `at`, 0 where there can be none.
    std::uint32_t CellSize(std::uint32_t at) const;
    // Does every byte of the cells' area belong to one cell, free block or fragment, as in a page that is
    // whole?
    bool IsSound() const;
    // Pages that an interior page points to.
    std::vector<std::uint32_t> Children() const;
    // The highest row below each child of a page of a table but the last; empty where one cannot be read.
    std::vector<std::int64_t> Dividers() const;
    // Of a sound page.
    FreeSpace FreeBlocks() const;
    // The record of an index cell, empty where it is not wholly in the page.
    Bytes IndexRecord(std::uint32_t at) const;

private:
    std::uint32_t PointersStart() const { return header_ + (IsInterior() ? 12 : 8); }

    std::uint32_t IndexLocalSize(std::uint64_t payload) const;
    std::optional<std::uint64_t> FreeBytes() const;

    Bytes bytes_;
    std::uint32_t usable_;
    std::uint32_t header_;
    PageKind kind_ = PageKind::Other;
    std::uint32_t cellCount_ = 0;
};

} // namespace paukfix
