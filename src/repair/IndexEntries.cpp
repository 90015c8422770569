// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "IndexEntries.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

// More index entries than a card file can have; what stands beyond is left out, so that memory stays bounded.
constexpr std::size_t MostEntries = 500'000;

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

} // namespace

IndexEntries::IndexEntries(const PageReader &reader, const PageTrees &trees, const Progress &progress)
{
    std::vector<std::uint8_t> buffer;
    for (const bool reached : {true, false}) {
        const std::size_t before = numbers_.size();
        for (std::uint32_t number = reader.NextPage(1); number != 0; number = reader.NextPage(number)) {
            Melden(progress, static_cast<int>(number), static_cast<int>(reader.PageCount()));
            const PageKind kind = trees.Kind(number);
            if ((kind == PageKind::IndexLeaf || kind == PageKind::IndexInterior) &&
                (reached ? trees.InIndex(number) : trees.InNone(number) && !trees.IsFree(number)))
                ReadPage(BTreePage(reader.Read(number, buffer), number, reader.Geometry()),
                         trees.IsWhole(number), reached);
        }
        covers_ = trees.NumbersWhole() && (reached || numbers_.size() == before);
    }
    gaps_.Finish();
}

void IndexEntries::ReadPage(const BTreePage &page, bool whole, bool reached)
{
    std::vector<double> keys;
    const std::vector<std::uint32_t> offsets = page.CellOffsets();
    for (const std::uint32_t offset : offsets) {
        const std::vector<double> values = IndexNumbers(page.IndexRecord(offset));
        if (values.size() < 2 || std::abs(values.back()) > 0x1p62 ||
            values.back() != std::floor(values.back()))
            continue;
        const auto row = static_cast<std::int64_t>(values.back());
        if (values.size() == 2 && numbers_.size() < MostEntries) {
            numbers_.try_emplace(row, values[0]);
            if (reached)
                inTree_.insert(values[0]);
            keys.push_back(values[0]);
            highest_ = std::max(highest_, values[0]);
        } else if (values.size() == 3 && places_.size() < MostEntries) {
            Places &places = places_[row];
            if (places.count < MostPlaces && !KnowsPlace(row, {values[0], values[1]}))
                places.known[places.count++] = {values[0], values[1]};
        }
    }
    // Between the entries of an interior page lie whole pages.
    if (whole && page.Kind() == PageKind::IndexLeaf && keys.size() == offsets.size())
        gaps_.AddPage(keys);
}

bool IndexEntries::KnowsPlace(std::int64_t row, Place place) const
{
    const auto entry = places_.find(row);
    if (entry == places_.end())
        return false;
    const auto end = entry->second.known.begin() + static_cast<std::ptrdiff_t>(entry->second.count);
    return std::find(entry->second.known.begin(), end, place) != end;
}

std::optional<IndexEntries::Place> IndexEntries::PlaceOf(std::int64_t row) const
{
    const auto entry = places_.find(row);
    return entry == places_.end() || entry->second.count == 0 ? std::nullopt
                                                              : std::optional(entry->second.known[0]);
}

} // namespace paukfix
