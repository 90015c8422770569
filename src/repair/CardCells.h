// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardKeys.h"
#include "CardRecord.h"
#include "PageReader.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace paukfix {

// Where the values of a card stand in its record.
struct CardShape
{
    std::array<std::uint64_t, CardColumnCount> types{};   // serial types
    std::array<std::uint64_t, CardColumnCount> offsets{}; // from the record's first byte
};

// Longest possible head of a card's record: its own length and 52 serial types.
inline constexpr std::uint32_t MaxCardHead = 2 + CardColumnCount * 5;

// Reads the shape from the first bytes of a record of `payload` bytes. Nothing where that is no card: 52
// values, each of its column's kind, that fill the record to the last byte.
std::optional<CardShape> ReadCardShape(Bytes start, std::uint64_t payload);
// The same question asked of the part in the page only, which may end within the record's head: cheap, and
// says no to nearly everything that is no card.
bool LooksLikeCard(Bytes start, std::uint64_t payload);

// A card found in the pages of a damaged file; its texts are not read yet.
struct CardCell : FoundCard
{
    std::uint32_t page = 0;   // 0: only the engine can read this card
    std::uint32_t offset = 0; // of the cell in the page
    std::uint32_t end = 0;    // first byte of the page behind what is left of the cell there
    bool overwritten = false; // another card begins where this one should go on
    bool inside = false;      // begins inside a card that a pointer leads to
    bool pointed = true; // the page's own pointers lead to it, false where it was found by searching the page
    bool free = false;   // its page is on the free list
    bool doubted = false;         // one of its pages does not fit its sum
    std::uint32_t pageFaults = 0; // cards of its page that the indexes contradict
};

// The card whose cell begins at `offset`; nothing where there is none.
std::optional<CardCell> ReadCardCell(const PageReader &reader, Bytes page, std::uint32_t number,
                                     std::uint32_t offset);
// All cards of a page, by offset: those that its pointers lead to, and those that begin anywhere else and
// that `believe` takes for cards. One that begins inside a card has overwritten that card's end.
std::vector<CardCell> FindCards(const PageReader &reader, Bytes page, std::uint32_t number,
                                const std::function<bool(const CardCell &)> &believe);

// Visits the overflow pages of a cell in order with the part of the record that each holds. False where the
// chain breaks, does not end with the record, or `visit` returns false.
bool WalkOverflow(const PageReader &reader, const LeafCell &cell,
                  const std::function<bool(std::uint32_t page, Bytes part)> &visit);

} // namespace paukfix
