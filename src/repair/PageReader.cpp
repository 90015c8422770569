// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PageReader.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <unistd.h>

namespace paukfix {

namespace {

// Something is kept of every page. No box needs more: with the smallest pages this is four gigabytes.
constexpr std::int64_t MostPages = 8'000'000;

} // namespace

std::uint32_t Big16(Bytes bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 8 | bytes[at + 1];
}

std::uint32_t Big32(Bytes bytes, std::size_t at)
{
    return Big16(bytes, at) << 16 | Big16(bytes, at + 2);
}

std::uint32_t ReadVarint(Bytes bytes, std::size_t at, std::uint64_t &value)
{
    value = 0;
    for (std::uint32_t i = 0; i < 9 && at + i < bytes.size(); ++i) {
        const std::uint8_t byte = bytes[at + i];
        if (i == 8) {
            value = value << 8 | byte;
            return 9;
        }
        value = value << 7 | (byte & 0x7FU);
        if ((byte & 0x80U) == 0)
            return i + 1;
    }
    return 0;
}

bool AllZero(Bytes bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

std::uint64_t SerialSize(std::uint64_t serialType)
{
    static constexpr std::uint8_t Sizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, 0, 0};
    return serialType < 12 ? Sizes[serialType] : (serialType - 12) / 2;
}

bool IsNumberType(std::uint64_t serialType)
{
    return serialType >= 1 && serialType <= 9;
}

bool IsTextType(std::uint64_t serialType)
{
    return serialType >= 12;
}

std::optional<double> RecordNumber(std::uint64_t serialType, Bytes value)
{
    const auto size = static_cast<std::size_t>(SerialSize(serialType));
    if (!IsNumberType(serialType) || value.size() < size)
        return std::nullopt;
    if (size == 0)
        return static_cast<double>(serialType - 8); // 0 and 1 have types of their own
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < size; ++i)
        bits = bits << 8 | value[i];
    if (serialType == 7) {
        const auto number = std::bit_cast<double>(bits);
        return std::isnan(number) ? std::nullopt : std::optional(number);
    }
    // A set top bit makes a number of 1 to 6 bytes negative; in one of 8 bytes it is in its place already.
    if (size < 8 && (bits >> (8 * size - 1)) != 0)
        bits |= ~std::uint64_t{0} << (8 * size);
    return static_cast<double>(static_cast<std::int64_t>(bits));
}

PageReader::PageReader(int file, std::int64_t size, PageGeometry geometry)
    : file_(file), size_(size), geometry_(geometry), parts_(DataParts(file, size))
{
    const std::int64_t end = parts_.empty() ? 0 : parts_.back().to;
    pageCount_ =
        static_cast<std::uint32_t>(std::min((end + geometry.pageSize - 1) / geometry.pageSize, MostPages));
}

std::uint32_t PageReader::NextPage(std::uint32_t number) const
{
    const std::int64_t at = static_cast<std::int64_t>(number) * geometry_.pageSize;
    const auto part =
        std::upper_bound(parts_.begin(), parts_.end(), at,
                         [](std::int64_t from, const DataPart &data) { return from < data.to; });
    if (part == parts_.end())
        return 0;
    const std::int64_t next = std::max(at, part->from) / geometry_.pageSize + 1;
    return next <= pageCount_ ? static_cast<std::uint32_t>(next) : 0;
}

std::uint32_t PageReader::Present(std::uint32_t number) const
{
    const std::int64_t left = size_ - static_cast<std::int64_t>(number - 1) * geometry_.pageSize;
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(left, 0, geometry_.pageSize));
}

Bytes PageReader::Read(std::uint32_t number, std::vector<std::uint8_t> &buffer) const
{
    buffer.resize(geometry_.pageSize);
    ReadTolerant(file_, static_cast<std::int64_t>(number - 1) * geometry_.pageSize, buffer.data(),
                 buffer.size());
    return buffer;
}

namespace {

// Bytes of a record that stay in the page, see "Cell payload overflow pages" in the format's description.
std::uint32_t LocalSize(std::uint64_t payload, std::uint32_t usable, std::uint32_t most)
{
    if (payload <= most)
        return static_cast<std::uint32_t>(payload);
    const std::uint32_t least = (usable - 12) * 32 / 255 - 23;
    const auto size = least + static_cast<std::uint32_t>((payload - least) % (usable - 4));
    return size <= most ? size : least;
}

} // namespace

std::optional<LeafCell> ReadLeafCell(Bytes page, std::uint32_t usable, std::uint32_t at)
{
    const Bytes bytes = page.first(usable);
    LeafCell cell;
    std::uint64_t rowid = 0;
    const std::uint32_t payloadLength = ReadVarint(bytes, at, cell.payload);
    const std::uint32_t rowidLength = ReadVarint(bytes, at + payloadLength, rowid);
    if (payloadLength == 0 || rowidLength == 0 || cell.payload > MaxPayload)
        return std::nullopt;
    cell.rowid = static_cast<std::int64_t>(rowid);
    cell.local = at + payloadLength + rowidLength;
    cell.localSize = LocalSize(cell.payload, usable, usable - 35);
    cell.end = cell.local + cell.localSize + (cell.localSize < cell.payload ? 4 : 0);
    if (cell.end > usable)
        return std::nullopt;
    if (cell.localSize < cell.payload)
        cell.overflow = Big32(bytes, cell.end - 4);
    return cell;
}

BTreePage::BTreePage(Bytes bytes, std::uint32_t number, const PageGeometry &geometry)
    : bytes_(bytes.first(geometry.usable)), usable_(geometry.usable), header_(number == 1 ? 100 : 0)
{
    switch (const std::uint8_t type = bytes_[header_]) {
    case 2:
    case 5:
    case 10:
    case 13:
        kind_ = static_cast<PageKind>(type);
        break;
    default:
        break;
    }
    cellCount_ = Big16(bytes_, header_ + 3);
}

std::vector<std::uint32_t> BTreePage::CellOffsets() const
{
    std::vector<std::uint32_t> offsets;
    for (std::uint32_t i = 0; i < cellCount_; ++i) {
        const std::uint32_t pointer = PointersStart() + 2 * i;
        if (pointer + 2 > usable_)
            break;
        const std::uint32_t offset = Big16(bytes_, pointer);
        if (offset >= PointersStart() && offset < usable_)
            offsets.push_back(offset);
    }
    return offsets;
}

std::uint32_t BTreePage::IndexLocalSize(std::uint64_t payload) const
{
    return LocalSize(payload, usable_, (usable_ - 12) * 64 / 255 - 23);
}

std::uint32_t BTreePage::CellSize(std::uint32_t at) const
{
    std::uint64_t number = 0;
    std::uint32_t size = 0;
    if (kind_ == PageKind::TableLeaf) {
        const auto cell = ReadLeafCell(bytes_, usable_, at);
        size = cell ? cell->end - at : 0;
    } else if (kind_ == PageKind::TableInterior) {
        const std::uint32_t length = ReadVarint(bytes_, at + 4, number);
        size = length == 0 ? 0 : 4 + length;
    } else if (kind_ != PageKind::Other) {
        const std::uint32_t child = kind_ == PageKind::IndexInterior ? 4 : 0;
        const std::uint32_t length = ReadVarint(bytes_, at + child, number);
        if (length == 0 || number > MaxPayload)
            return 0;
        const std::uint32_t local = IndexLocalSize(number);
        size = child + length + local + (local < number ? 4 : 0);
    }
    if (size == 0 || at + size > usable_)
        return 0;
    return std::max(size, 4U); // the engine never gives a cell less
}

std::optional<std::uint64_t> BTreePage::FreeBytes() const
{
    std::uint64_t sum = bytes_[header_ + 7]; // fragments
    std::uint32_t last = 0;
    for (std::uint32_t block = Big16(bytes_, header_ + 1); block != 0;) {
        if (block <= last || block + 4 > usable_)
            return std::nullopt; // free blocks ascend
        const std::uint32_t size = Big16(bytes_, block + 2);
        if (size < 4 || block + size > usable_)
            return std::nullopt;
        sum += size;
        last = block;
        block = Big16(bytes_, block);
    }
    return sum;
}

bool BTreePage::IsSound() const
{
    const auto free = FreeBytes();
    if (kind_ == PageKind::Other || !free)
        return false;
    const std::vector<std::uint32_t> offsets = CellOffsets();
    std::uint32_t start = Big16(bytes_, header_ + 5);
    if (start == 0)
        start = MaxPageSize;
    if (offsets.size() != cellCount_ || start < PointersStart() + 2 * cellCount_ || start > usable_)
        return false;
    std::uint64_t sum = *free;
    for (const std::uint32_t offset : offsets) {
        const std::uint32_t size = CellSize(offset);
        if (size == 0 || offset < start)
            return false;
        sum += size;
    }
    return sum == usable_ - start;
}

std::vector<std::uint32_t> BTreePage::Children() const
{
    std::vector<std::uint32_t> children;
    if (!IsInterior())
        return children;
    for (const std::uint32_t offset : CellOffsets())
        if (offset + 4 <= usable_)
            children.push_back(Big32(bytes_, offset));
    children.push_back(Big32(bytes_, header_ + 8));
    return children;
}

std::vector<std::int64_t> BTreePage::Dividers() const
{
    std::vector<std::int64_t> dividers;
    if (kind_ != PageKind::TableInterior)
        return dividers;
    for (const std::uint32_t offset : CellOffsets()) {
        std::uint64_t row = 0;
        if (offset + 4 > usable_ || ReadVarint(bytes_, offset + 4, row) == 0)
            return {};
        dividers.push_back(static_cast<std::int64_t>(row));
    }
    return dividers;
}

FreeSpace BTreePage::FreeBlocks() const
{
    constexpr std::uint32_t Head = 4, Enough = 32;
    FreeSpace found = FreeSpace::Unknown;
    for (std::uint32_t block = Big16(bytes_, header_ + 1); block != 0; block = Big16(bytes_, block)) {
        const std::uint32_t size = Big16(bytes_, block + 2);
        if (size < Head + Enough)
            continue;
        const Bytes content = bytes_.subspan(block + Head, size - Head);
        const auto zeros = std::count(content.begin(), content.end(), std::uint8_t{0});
        if (static_cast<std::size_t>(zeros) * 2 < content.size())
            return FreeSpace::Left;
        found = FreeSpace::Wiped;
    }
    return found;
}

Bytes BTreePage::IndexRecord(std::uint32_t at) const
{
    const std::uint32_t child = kind_ == PageKind::IndexInterior ? 4 : 0;
    std::uint64_t payload = 0;
    const std::uint32_t length = ReadVarint(bytes_, at + child, payload);
    if (length == 0 || payload > usable_ || at + child + length + payload > usable_)
        return {};
    return bytes_.subspan(at + child + length, static_cast<std::size_t>(payload));
}

} // namespace paukfix
