// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PageTrees.h"

#include "CardSchema.h"
#include "PageSums.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>
#include <limits>

namespace paukfix {

namespace {

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

bool IsNamed(const RecordValue &value, const char *name)
{
    return value.bytes.size() == std::strlen(name) &&
           qstrnicmp(reinterpret_cast<const char *>(value.bytes.data()), name, value.bytes.size()) == 0;
}

} // namespace

PageTrees::PageTrees(const PageReader &reader, const Progress &progress)
    : reader_(reader),
      kinds_(reader.PageCount() + 1, PageKind::Other),
      owner_(reader.PageCount() + 1, Owner::None),
      sound_(reader.PageCount() + 1),
      wrong_(reader.PageCount() + 1),
      empty_(reader.PageCount() + 1, true),
      free_(reader.PageCount() + 1)
{
    ClassifyPages(progress);
    ReadFreeList();
    const std::vector<SchemaRow> rows = ReadSchema();
    bool tableFound = false;
    for (const SchemaRow &row : rows)
        if (row.object == Object::CardTable)
            tableFound = WalkTree(row.root, Owner::Table, PageKind::TableLeaf) ||
                         kinds_[row.root] == PageKind::TableInterior;
        else if (row.object == Object::NumberIndex)
            numbersWhole_ = WalkTree(row.root, Owner::Index, PageKind::IndexLeaf);
        else if (row.object == Object::PlaceIndex)
            WalkTree(row.root, Owner::Index, PageKind::IndexLeaf);
    // What other tables own is believed only beside a table of cards: a damaged name must not hide the cards.
    for (const SchemaRow &row : rows)
        if (tableFound && (row.object == Object::OtherTable || row.object == Object::OtherIndex))
            WalkTree(row.root, Owner::Other,
                     row.object == Object::OtherTable ? PageKind::TableLeaf : PageKind::IndexLeaf);
}

bool PageTrees::InTable(std::uint32_t page, std::int64_t row) const
{
    const auto rows = rows_.find(page);
    return rows != rows_.end() && row > rows->second.above && row <= rows->second.upTo;
}

std::uint32_t PageTrees::LeafOf(std::int64_t row) const
{
    const auto leaf = leavesByRow_.lower_bound(row);
    return leaf != leavesByRow_.end() && InTable(leaf->second, row) ? leaf->second : 0;
}

void PageTrees::ClassifyPages(const Progress &progress)
{
    constexpr std::uint32_t MarkPlace = 68;
    std::vector<std::uint8_t> buffer;
    bool ours = false;
    std::uint32_t left = 0, wiped = 0;
    for (std::uint32_t number = reader_.NextPage(0); number != 0; number = reader_.NextPage(number)) {
        Melden(progress, static_cast<int>(number), static_cast<int>(reader_.PageCount()));
        const Bytes bytes = reader_.Read(number, buffer);
        const BTreePage page(bytes, number, reader_.Geometry());
        kinds_[number] = page.Kind();
        empty_[number] = AllZero(bytes);
        sound_[number] = page.IsSound() && reader_.Present(number) >= reader_.Geometry().usable;
        wrong_[number] = reader_.Geometry().hasSums && !PageSumFits(bytes);
        wrongSums_ += wrong_[number] ? 1 : 0;
        ours = ours || (number == 1 && Big32(bytes, MarkPlace) == CardFileMark);
        if (!sound_[number])
            continue;
        switch (page.FreeBlocks()) {
        case FreeSpace::Unknown:
            break;
        case FreeSpace::Wiped:
            ++wiped;
            break;
        case FreeSpace::Left:
            ++left;
            break;
        }
    }
    // A page that was written in parts may look like one of the other kind.
    wipes_ = left * 4 <= wiped && (ours || wiped > 0);
}

// A list that does not hold exactly what the header says, or of a file with another number of pages, is out
// of date or damaged, and tells nothing.
void PageTrees::ReadFreeList()
{
    if (reader_.PageCount() == 0)
        return;
    std::vector<std::uint8_t> buffer;
    const Bytes header = reader_.Read(1, buffer);
    if (std::memcmp(header.data(), "SQLite format 3", 16) != 0)
        return;
    const std::uint32_t most = reader_.Geometry().usable / 4 - 2;
    const std::uint32_t stated = Big32(header, 36);
    const std::uint32_t pages = Big32(header, 28); // 0 where an old engine wrote last
    hasGrown_ = pages != 0 && pages < reader_.PageCount();
    std::uint32_t listed = 0, leaves = 0, withContent = 0;
    bool sound = true;
    std::uint32_t trunk = Big32(header, 32);
    while (sound && trunk != 0) {
        sound = reader_.IsInner(trunk) && !free_[trunk];
        if (!sound)
            break;
        free_[trunk] = true;
        ++listed;
        const Bytes page = reader_.Read(trunk, buffer);
        const std::uint32_t count = Big32(page, 4);
        sound = count <= most;
        for (std::uint32_t i = 0; sound && i < count; ++i) {
            const std::uint32_t leaf = Big32(page, 8 + std::size_t{4} * i);
            sound = reader_.IsInner(leaf) && !free_[leaf];
            if (!sound)
                break;
            free_[leaf] = true;
            ++listed;
            ++leaves;
            withContent += empty_[leaf] ? 0 : 1;
        }
        trunk = Big32(page, 0);
    }
    sound = sound && listed == stated && (pages == 0 || pages == reader_.PageCount());
    if (sound && withContent * 2 > leaves)
        wipes_ = false;
    // Where the engine wipes what it frees, a listed page with content is in use.
    if (!sound || wipes_)
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
            Object object = isTable ? Object::OtherTable : Object::OtherIndex;
            if (isTable && IsNamed(values[1], "Lernkarten"))
                object = Object::CardTable;
            else if (!isTable && IsNamed(values[2], "Lernkarten") && IsNamed(values[1], "FrageNr"))
                object = Object::NumberIndex;
            else if (!isTable && IsNamed(values[2], "Lernkarten") && IsNamed(values[1], "BoxKey"))
                object = Object::PlaceIndex;
            rows.push_back({object, static_cast<std::uint32_t>(root)});
        }
    }
    return rows;
}

void PageTrees::AddChildren(const BTreePage &page, RowRange rows, std::vector<Open> &open)
{
    const std::vector<std::uint32_t> children = page.Children();
    const std::vector<std::int64_t> dividers = page.Dividers();
    const bool dividersFit =
        dividers.size() + 1 == children.size() && std::is_sorted(dividers.begin(), dividers.end());
    for (std::size_t i = 0; i < children.size(); ++i) {
        RowRange part = rows;
        if (dividersFit && i > 0)
            part.above = std::max(rows.above, dividers[i - 1]);
        if (dividersFit && i < dividers.size())
            part.upTo = std::min(rows.upTo, dividers[i]);
        open.push_back({children[i], part});
    }
}

bool PageTrees::WalkTree(std::uint32_t root, Owner owner, PageKind leaf)
{
    using Rows = std::numeric_limits<std::int64_t>;
    const PageKind interior = leaf == PageKind::TableLeaf ? PageKind::TableInterior : PageKind::IndexInterior;
    bool whole = true;
    std::vector<Open> open{{root, {Rows::min(), Rows::max()}}};
    std::vector<std::uint8_t> buffer;
    while (!open.empty()) {
        const auto [number, rows] = open.back();
        open.pop_back();
        if (!reader_.IsInner(number) || owner_[number] != Owner::None ||
            (kinds_[number] != leaf && kinds_[number] != interior)) {
            whole = false;
            continue;
        }
        owner_[number] = owner;
        whole = whole && IsWhole(number);
        if (kinds_[number] == interior)
            AddChildren(BTreePage(reader_.Read(number, buffer), number, reader_.Geometry()), rows, open);
        else if (owner == Owner::Table && rows_.emplace(number, rows).second)
            leavesByRow_.emplace(rows.upTo, number);
    }
    return whole;
}

} // namespace paukfix
