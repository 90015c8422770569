// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardCells.h"

#include "CardValue.h"

#include <algorithm>

namespace paukfix {

namespace {

bool FitsColumn(int column, std::uint64_t serialType)
{
    if (serialType == 0)
        return true;
    return KindOf(column) == CardKind::Text ? IsTextType(serialType) : IsNumberType(serialType);
}

// Reads the head's own length, which must be one that 52 serial types can have.
std::uint32_t ReadHeadLength(Bytes start, std::uint64_t payload, std::uint64_t &length)
{
    const std::uint32_t used = ReadVarint(start, 0, length);
    const bool possible =
        used != 0 && length >= used + CardColumnCount && length <= MaxCardHead && length <= payload;
    return possible ? used : 0;
}

} // namespace

std::optional<CardShape> ReadCardShape(Bytes start, std::uint64_t payload)
{
    std::uint64_t head = 0;
    std::uint32_t at = ReadHeadLength(start, payload, head);
    if (at == 0 || head > start.size())
        return std::nullopt;
    const Bytes types = start.first(static_cast<std::size_t>(head));
    CardShape shape;
    std::uint64_t offset = head;
    for (int column = 0; column < CardColumnCount; ++column) {
        std::uint64_t type = 0;
        const std::uint32_t used = ReadVarint(types, at, type);
        if (used == 0 || !FitsColumn(column, type))
            return std::nullopt;
        at += used;
        shape.types[static_cast<std::size_t>(column)] = type;
        shape.offsets[static_cast<std::size_t>(column)] = offset;
        offset += SerialSize(type);
        if (offset > payload)
            return std::nullopt;
    }
    return at == head && offset == payload ? std::optional(shape) : std::nullopt;
}

bool LooksLikeCard(Bytes start, std::uint64_t payload)
{
    std::uint64_t head = 0;
    std::uint32_t at = ReadHeadLength(start, payload, head);
    if (at == 0)
        return false;
    if (head <= start.size())
        return ReadCardShape(start, payload).has_value();
    for (int column = 0; column < CardColumnCount; ++column) {
        std::uint64_t type = 0;
        const std::uint32_t used = ReadVarint(start, at, type);
        if (used == 0)
            return column >= CardColumnCount / 2; // the part in the page ends here
        if (!FitsColumn(column, type))
            return false;
        at += used;
    }
    return true;
}

bool WalkOverflow(const PageReader &reader, const LeafCell &cell,
                  const std::function<bool(std::uint32_t page, Bytes part)> &visit)
{
    std::vector<std::uint8_t> buffer;
    std::uint64_t missing = cell.payload - cell.localSize;
    std::uint32_t next = cell.overflow;
    while (missing > 0) {
        if (!reader.IsInner(next))
            return false;
        const auto part =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(missing, reader.Geometry().usable - 4));
        const Bytes page = reader.Read(next, buffer);
        const std::uint32_t present = std::min(reader.Present(next), part + 4);
        // No text has a page of zeros in it: such a page was wiped.
        if (present <= 4 || AllZero(page))
            return false;
        if (!visit(next, page.subspan(4, present - 4)) || present < part + 4)
            return false;
        missing -= part;
        next = Big32(page, 0);
    }
    return next == 0;
}

std::optional<CardCell> ReadCardCell(const PageReader &reader, Bytes page, std::uint32_t number,
                                     std::uint32_t offset)
{
    const auto cell = ReadLeafCell(page, reader.Geometry().usable, offset);
    if (!cell)
        return std::nullopt;
    const std::uint32_t present = reader.Present(number);
    if (cell->local >= present)
        return std::nullopt;
    const Bytes local = page.subspan(cell->local, std::min(cell->localSize, present - cell->local));
    if (!LooksLikeCard(local, cell->payload))
        return std::nullopt;

    // With small pages the head itself goes on in the overflow pages.
    constexpr std::uint32_t KeysSize = 3 * 8;
    constexpr std::size_t Wanted = MaxCardHead + KeysSize;
    std::vector<std::uint8_t> start(local.begin(), local.end());
    if (start.size() < Wanted && start.size() == cell->localSize)
        WalkOverflow(reader, *cell, [&](std::uint32_t, Bytes part) {
            start.insert(start.end(), part.begin(), part.end());
            return start.size() < Wanted;
        });
    const auto shape = ReadCardShape(start, cell->payload);
    if (!shape)
        return std::nullopt;

    CardCell card;
    card.rowid = cell->rowid;
    card.page = number;
    card.offset = offset;
    card.end = cell->end;
    double *const keys[] = {&card.number, &card.compartment, &card.place};
    for (std::size_t i = 0; i < std::size(keys); ++i) {
        const auto from = static_cast<std::size_t>(shape->offsets[i]);
        if (from <= start.size())
            *keys[i] = RecordNumber(shape->types[i], Bytes(start).subspan(from)).value_or(CardCell::None);
    }
    return card;
}

namespace {

// A look at the first bytes of a cell that sorts out nearly everything in a text: length and row are followed
// by the head's length, from 53 on, and the serial types of four numbers.
bool MayBegin(Bytes page, std::uint32_t at)
{
    const auto byteAt = [&](std::uint32_t i) { return i < page.size() ? page[i] : std::uint8_t{0xFF}; };
    for (int varint = 0; varint < 2; ++varint)
        for (int length = 1; (byteAt(at++) & 0x80U) != 0; ++length)
            if (length == 9)
                break;
    if (byteAt(at) <= CardColumnCount)
        return false;
    at += (byteAt(at) & 0x80U) != 0 ? 2 : 1;
    return byteAt(at) <= 9 && byteAt(at + 1) <= 9 && byteAt(at + 2) <= 9 && byteAt(at + 3) <= 9;
}

} // namespace

std::vector<CardCell> FindCards(const PageReader &reader, Bytes page, std::uint32_t number,
                                const std::function<bool(const CardCell &)> &believe)
{
    const std::uint32_t usable = reader.Geometry().usable;
    std::vector<bool> pointed(usable);
    for (const std::uint32_t offset : BTreePage(page, number, reader.Geometry()).CellOffsets())
        pointed[offset] = true;

    std::vector<CardCell> cards;
    std::uint32_t pointedEnd = 0;
    for (std::uint32_t offset = number == 1 ? 108 : 8; offset < usable; ++offset) {
        if (!MayBegin(page, offset))
            continue;
        auto card = ReadCardCell(reader, page, number, offset);
        if (!card)
            continue;
        card->pointed = pointed[offset];
        card->inside = offset < pointedEnd;
        if (!card->pointed && !believe(*card))
            continue;
        if (card->pointed)
            pointedEnd = std::max(pointedEnd, card->end);
        if (!cards.empty() && cards.back().end > offset) {
            CardCell &before = cards.back();
            before.end = offset;
            before.overwritten = true;
            if (!before.pointed)
                cards.pop_back(); // only the rest of an older state
        }
        cards.push_back(*card);
    }
    return cards;
}

} // namespace paukfix
