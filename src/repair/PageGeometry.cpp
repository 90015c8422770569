// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardCells.h"
#include "PageSums.h"
#include "PageTrees.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace paukfix {

namespace {

struct Guess
{
    PageGeometry geometry;
    std::uint64_t cards = 0;   // cells seen that look like cards when the file is read so
    std::uint64_t fitting = 0; // pages whose sum fits then
};

bool IsPageSize(std::uint32_t size)
{
    return size >= MinPageSize && size <= MaxPageSize && std::has_single_bit(size);
}

// Counts the cells of a leaf page that look like cards, should this be one.
std::uint64_t CountCards(Bytes bytes, std::uint32_t number, const PageGeometry &geometry,
                         std::uint64_t pageCount)
{
    const BTreePage page(bytes, number, geometry);
    if (page.Kind() != PageKind::TableLeaf)
        return 0;
    std::uint64_t cards = 0;
    std::vector<std::uint32_t> offsets = page.CellOffsets();
    // No page holds more cards: a forged one must not cost more time.
    offsets.resize(std::min<std::size_t>(offsets.size(), geometry.usable / CardColumnCount));
    for (const std::uint32_t offset : offsets) {
        const auto cell = ReadLeafCell(bytes, geometry.usable, offset);
        if (cell &&
            (cell->localSize == cell->payload || (cell->overflow > 1 && cell->overflow <= pageCount)) &&
            LooksLikeCard(bytes.subspan(cell->local, cell->localSize), cell->payload))
            ++cards;
    }
    return cards;
}

} // namespace

PageGeometry FindGeometry(int file, std::int64_t size, const Progress &progress)
{
    std::vector<std::uint8_t> block(MaxPageSize);
    ReadTolerant(file, 0, block.data(), 100);
    // 65536 does not fit into the header's two bytes and stands there as 1.
    const std::uint32_t stated = Big16(block, 16) == 1 ? MaxPageSize : Big16(block, 16);
    const std::uint32_t reserved = block[20];

    std::vector<Guess> guesses;
    for (std::uint32_t pageSize = MinPageSize; pageSize <= MaxPageSize; pageSize *= 2) {
        if (reserved != 0 && reserved != PageSumSize && pageSize - reserved >= 480)
            guesses.push_back({{pageSize, pageSize - reserved}});
        const Guess withRoom{{pageSize, pageSize - PageSumSize}};
        if (reserved == PageSumSize)
            guesses.push_back(withRoom);
        guesses.push_back({{pageSize, pageSize}});
        if (reserved != PageSumSize)
            guesses.push_back(withRoom);
    }
    const std::vector<DataPart> parts = DataParts(file, size);
    auto part = parts.begin();
    for (std::int64_t at = 0; at < size; at += MaxPageSize) {
        while (part != parts.end() && part->to <= at)
            ++part;
        if (part == parts.end())
            break;
        at = std::max(at, part->from / MaxPageSize * MaxPageSize);
        Melden(progress, static_cast<int>(at / MaxPageSize), static_cast<int>(size / MaxPageSize + 1));
        ReadTolerant(file, at, block.data(), block.size());
        for (Guess &guess : guesses) {
            const std::uint32_t pageSize = guess.geometry.pageSize;
            const auto pageCount = static_cast<std::uint64_t>((size + pageSize - 1) / pageSize);
            for (std::uint32_t from = 0; from < MaxPageSize; from += pageSize) {
                const Bytes page = Bytes(block).subspan(from, pageSize);
                guess.cards += CountCards(page, at + from == 0 ? 1 : 2, guess.geometry, pageCount);
                if (pageSize - guess.geometry.usable == PageSumSize && !AllZero(page) && PageSumFits(page))
                    ++guess.fitting;
            }
        }
    }
    // No sum fits by accident.
    const auto sums =
        std::max_element(guesses.begin(), guesses.end(),
                         [](const Guess &one, const Guess &other) { return one.fitting < other.fitting; });
    if (sums->fitting > 0) {
        sums->geometry.hasSums = true;
        return sums->geometry;
    }
    // Of two that read equally many cards the smaller one is right: cells fill a page from its end.
    const Guess *best = nullptr;
    for (const Guess &guess : guesses)
        if (guess.cards > (best == nullptr ? 0 : best->cards))
            best = &guess;
    if (best != nullptr)
        return best->geometry;
    return IsPageSize(stated) ? PageGeometry{stated, stated} : PageGeometry{};
}

} // namespace paukfix
