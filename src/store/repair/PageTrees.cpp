// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PageTrees.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// More index entries than a card file can have; what stands beyond is left out, so that memory stays bounded.
constexpr std::size_t mostEntries = 500'000;

struct RecordValue
{
    std::uint64_t type = 0;
    Bytes bytes; // as far as they are in the page
};

// The first `count` values of a record, of which only a part may be at hand; empty where it has not so many.
std::vector<RecordValue> FirstValues(Bytes record, std::size_t count)
{
    std::uint64_t head = 0;
    std::uint32_t at = ReadVarint(record, 0, head);
    if (at == 0 || head > record.size())
        return {};
    std::vector<RecordValue> values;
    auto offset = static_cast<std::size_t>(head);
    while (values.size() < count && at < head) {
        RecordValue value;
        const std::uint32_t used = ReadVarint(record.first(static_cast<std::size_t>(head)), at, value.type);
        const std::uint64_t size = SerialSize(value.type);
        if (used == 0 || size > record.size() - offset)
            break;
        at += used;
        value.bytes = record.subspan(offset, static_cast<std::size_t>(size));
        offset += static_cast<std::size_t>(size);
        values.push_back(value);
    }
    return values.size() == count ? values : std::vector<RecordValue>();
}

// The numbers that make up a whole index record; empty where it holds anything else.
std::vector<double> IndexNumbers(Bytes record)
{
    std::vector<double> numbers;
    std::uint64_t head = 0;
    std::uint32_t at = ReadVarint(record, 0, head);
    if (at == 0 || head > record.size() || head > 4)
        return {};
    auto offset = static_cast<std::size_t>(head);
    while (at < head) {
        std::uint64_t type = 0;
        at += std::max(1U, ReadVarint(record, at, type));
        const auto number = RecordNumber(type, record.subspan(std::min(offset, record.size())));
        if (!number)
            return {};
        numbers.push_back(*number);
        offset += static_cast<std::size_t>(SerialSize(type));
    }
    return offset == record.size() ? numbers : std::vector<double>();
}

bool IsNamed(const RecordValue &value, const char *name)
{
    return value.bytes.size() == std::strlen(name) &&
           qstrnicmp(reinterpret_cast<const char *>(value.bytes.data()), name, value.bytes.size()) == 0;
}

} // namespace

PageTrees::PageTrees(const PageReader &reader)
    : reader_(reader),
      kinds_(reader.PageCount() + 1, PageKind::Other),
      owner_(reader.PageCount() + 1, Owner::None),
      sound_(reader.PageCount() + 1),
      wiped_(reader.PageCount() + 1),
      free_(reader.PageCount() + 1)
{
    ClassifyPages();
    ReadFreeList();
    const std::vector<SchemaRow> rows = ReadSchema();
    bool tableFound = false;
    for (const SchemaRow &row : rows) {
        if (row.owner == Owner::Table) {
            tableWhole_ = WalkTree(row.root, Owner::Table, PageKind::TableLeaf);
            tableFound = tableWhole_ || kinds_[row.root] == PageKind::TableInterior;
        } else if (row.owner == Owner::NumberIndex) {
            numbersWhole_ = WalkTree(row.root, Owner::NumberIndex, PageKind::IndexLeaf);
        } else if (row.owner == Owner::PlaceIndex) {
            placesWhole_ = WalkTree(row.root, Owner::PlaceIndex, PageKind::IndexLeaf);
        }
    }
    // What other tables own is believed only beside a table of cards: a damaged name must not hide the cards.
    for (const SchemaRow &row : rows)
        if (row.owner == Owner::Other && tableFound)
            WalkTree(row.root, Owner::Other, row.isTable ? PageKind::TableLeaf : PageKind::IndexLeaf);
    ReadIndexes();
}

void PageTrees::ClassifyPages()
{
    std::vector<std::uint8_t> buffer;
    for (std::uint32_t number = 1; number <= reader_.PageCount(); ++number) {
        const Bytes bytes = reader_.Read(number, buffer);
        const BTreePage page(bytes, number, reader_.Geometry());
        kinds_[number] = page.Kind();
        wiped_[number] = AllZero(bytes);
        sound_[number] = page.IsSound() && reader_.Present(number) >= reader_.Geometry().usable;
    }
}

void PageTrees::ReadFreeList()
{
    if (reader_.PageCount() == 0)
        return;
    std::vector<std::uint8_t> buffer;
    const Bytes header = reader_.Read(1, buffer);
    if (std::memcmp(header.data(), "SQLite format 3", 16) != 0)
        return;
    std::uint32_t wiped = 0;
    std::uint32_t trunk = Big32(header, 32);
    while (reader_.IsInner(trunk) && !free_[trunk]) {
        free_[trunk] = true;
        const Bytes page = reader_.Read(trunk, buffer);
        const std::uint32_t count = std::min(Big32(page, 4), reader_.Geometry().usable / 4 - 2);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t leaf = Big32(page, 8 + std::size_t{4} * i);
            if (!reader_.IsInner(leaf) || free_[leaf])
                continue;
            free_[leaf] = true;
            wiped += wiped_[leaf] ? 1 : 0;
        }
        trunk = Big32(page, 0);
    }
    // Where the engine wipes what it frees, a listed page with content is in use and the list is out of date.
    // No page becomes all zeros otherwise.
    if (wiped > 0)
        free_.assign(free_.size(), false);
}

std::vector<PageTrees::SchemaRow> PageTrees::ReadSchema() const
{
    std::vector<SchemaRow> rows;
    std::vector<bool> seen(reader_.PageCount() + 1);
    std::vector<std::uint32_t> open;
    if (reader_.PageCount() > 0)
        open.push_back(1);
    std::vector<std::uint8_t> buffer;
    while (!open.empty()) {
        const std::uint32_t number = open.back();
        open.pop_back();
        if (number == 0 || number > reader_.PageCount() || seen[number])
            continue;
        seen[number] = true;
        const Bytes bytes = reader_.Read(number, buffer);
        const BTreePage page(bytes, number, reader_.Geometry());
        for (const std::uint32_t child : page.Children())
            open.push_back(child);
        if (page.Kind() != PageKind::TableLeaf)
            continue;
        for (const std::uint32_t offset : page.CellOffsets()) {
            const auto cell = ReadLeafCell(bytes, reader_.Geometry().usable, offset);
            // type, name, table name and root page; the SQL text behind them may go on elsewhere
            const auto values = cell ? FirstValues(bytes.subspan(cell->local, cell->localSize), 4)
                                     : std::vector<RecordValue>();
            if (values.empty())
                continue;
            const double root = RecordNumber(values[3].type, values[3].bytes).value_or(0);
            if (root < 2 || root > reader_.PageCount())
                continue;
            const bool isTable = IsNamed(values[0], "table");
            Owner owner = Owner::Other;
            if (isTable && IsNamed(values[1], "Lernkarten"))
                owner = Owner::Table;
            else if (!isTable && IsNamed(values[2], "Lernkarten") && IsNamed(values[1], "FrageNr"))
                owner = Owner::NumberIndex;
            else if (!isTable && IsNamed(values[2], "Lernkarten") && IsNamed(values[1], "BoxKey"))
                owner = Owner::PlaceIndex;
            rows.push_back({owner, static_cast<std::uint32_t>(root), isTable});
        }
    }
    return rows;
}

bool PageTrees::WalkTree(std::uint32_t root, Owner owner, PageKind leaf)
{
    const PageKind interior = leaf == PageKind::TableLeaf ? PageKind::TableInterior : PageKind::IndexInterior;
    bool whole = true;
    std::vector<std::uint32_t> open{root};
    std::vector<std::uint8_t> buffer;
    while (!open.empty()) {
        const std::uint32_t number = open.back();
        open.pop_back();
        if (!reader_.IsInner(number) || owner_[number] != Owner::None ||
            (kinds_[number] != leaf && kinds_[number] != interior)) {
            whole = false;
            continue;
        }
        owner_[number] = owner;
        whole = whole && sound_[number];
        if (kinds_[number] == interior)
            for (const std::uint32_t child :
                 BTreePage(reader_.Read(number, buffer), number, reader_.Geometry()).Children())
                open.push_back(child);
    }
    return whole;
}

void PageTrees::ReadIndexes()
{
    std::vector<std::uint8_t> buffer;
    for (std::uint32_t number = 2; number <= reader_.PageCount(); ++number) {
        if (kinds_[number] != PageKind::IndexLeaf && kinds_[number] != PageKind::IndexInterior)
            continue;
        // A page that no tree leads to may be of the index whose tree is broken, but not a free one.
        const bool inIndex = owner_[number] == Owner::NumberIndex || owner_[number] == Owner::PlaceIndex;
        const bool mayBe =
            owner_[number] == Owner::None && !free_[number] && !(numbersWhole_ && placesWhole_);
        if (inIndex || mayBe)
            ReadIndexPage(BTreePage(reader_.Read(number, buffer), number, reader_.Geometry()));
    }
}

void PageTrees::ReadIndexPage(const BTreePage &page)
{
    for (const std::uint32_t offset : page.CellOffsets()) {
        const std::vector<double> values = IndexNumbers(page.IndexRecord(offset));
        if (values.size() < 2 || std::abs(values.back()) > 0x1p62 ||
            values.back() != std::floor(values.back()))
            continue;
        const auto row = static_cast<std::int64_t>(values.back());
        if (values.size() == 2 && numbers_.size() < mostEntries)
            numbers_.insert_or_assign(row, values[0]);
        else if (values.size() == 3 && places_.size() < mostEntries)
            places_.insert_or_assign(row, Place{values[0], values[1]});
    }
}
