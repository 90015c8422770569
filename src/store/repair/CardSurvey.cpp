// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSurvey.h"

#include <algorithm>
#include <unordered_set>

namespace {

// Far more than a card file holds; what a forged file has beyond is left out, so that memory stays bounded.
constexpr std::size_t mostCards = 150'000;
// A page that so many cards claim ends their chains, so that forged chains cost no more than linear time.
constexpr std::uint8_t mostClaims = 8;
// So much of one record is read at most; a card beyond that is told to be cut.
constexpr std::size_t longestRecord = 64'000'000;

} // namespace

CardSurvey::CardSurvey(const PageReader &reader)
    : reader_(reader), trees_(reader), claims_(reader.PageCount() + 1), claimedEnds_(reader.PageCount() + 1)
{
    std::vector<CardCell> inLeaves, elsewhere;
    for (const bool leaves : {true, false}) {
        std::vector<CardCell> &found = leaves ? inLeaves : elsewhere;
        for (std::uint32_t number = 1; number <= reader_.PageCount() && found.size() < mostCards; ++number) {
            const bool isLeaf = trees_.Kind(number) == PageKind::TableLeaf;
            if (isLeaf != leaves || trees_.InOther(number) || (!isLeaf && trees_.IsSound(number)))
                continue;
            const std::vector<CardCell> cards = FindIn(number);
            found.insert(found.end(), cards.begin(), cards.end());
        }
        if (leaves)
            othersAreStale_ = IndexProves(found) || TableProves(found);
        Take(found);
    }
}

// A leaf page whose header was damaged, or which was written in parts, holds cards that no pointer leads to.
// They may also stand where a sound page has a card's text, or where another card claims a part of its own;
// but in what such a page does not use there may be a card that was deleted.
std::vector<CardCell> CardSurvey::FindIn(std::uint32_t number) const
{
    std::vector<std::uint8_t> buffer;
    const Bytes page = reader_.Read(number, buffer);
    if (AllZero(page))
        return {};
    const bool usedWhole = !trees_.IsSound(number) && claims_[number] == 0;
    std::vector<CardCell> cards = FindCards(reader_, page, number, [&](CardCell card) {
        CompareWithIndexes(card);
        return card.confirmed || usedWhole || card.inside || card.offset < claimedEnds_[number];
    });
    for (CardCell &card : cards)
        CompareWithIndexes(card);
    return cards;
}

void CardSurvey::CompareWithIndexes(CardCell &card) const
{
    const auto number = trees_.Numbers().find(card.rowid);
    const auto place = trees_.Places().find(card.rowid);
    card.reached = trees_.InTable(card.page);
    card.confirmed = number != trees_.Numbers().end() && number->second == card.number;
    card.placed = place != trees_.Places().end() && place->second.compartment == card.compartment &&
                  place->second.place == card.place;
}

bool CardSurvey::IndexProves(const std::vector<CardCell> &found) const
{
    return trees_.NumbersWhole() && std::all_of(found.begin(), found.end(), [](const CardCell &card) {
               return !card.reached || !card.pointed || card.confirmed;
           });
}

bool CardSurvey::TableProves(const std::vector<CardCell> &found) const
{
    if (!trees_.TableWhole())
        return false;
    std::unordered_set<std::int64_t> rows;
    for (const CardCell &card : found)
        if (card.reached)
            rows.insert(card.rowid);
    return std::all_of(trees_.Numbers().begin(), trees_.Numbers().end(),
                       [&](const auto &entry) { return rows.contains(entry.first); });
}

bool CardSurvey::MayVisit(std::uint32_t page) const
{
    // A sound leaf page is no part of a text, whatever a damaged chain says.
    return !(trees_.IsSound(page) && trees_.Kind(page) == PageKind::TableLeaf) && claims_[page] < mostClaims;
}

void CardSurvey::Take(const std::vector<CardCell> &found)
{
    std::vector<std::uint8_t> buffer;
    std::uint32_t inBuffer = 0;
    for (CardCell card : found) {
        const bool stale = othersAreStale_ || trees_.IsFree(card.page);
        if (!card.confirmed && !(card.reached && card.pointed) && stale)
            continue;
        if (inBuffer != card.page)
            reader_.Read(card.page, buffer);
        inBuffer = card.page;
        const auto cell = ReadLeafCell(buffer, reader_.Geometry().usable, card.offset);
        card.whole = !card.overwritten && cell->end <= reader_.Present(card.page) &&
                     WalkOverflow(reader_, *cell, [&](std::uint32_t page, Bytes part) {
                         if (!MayVisit(page))
                             return false;
                         ++claims_[page];
                         claimedEnds_[page] =
                             std::max(claimedEnds_[page], static_cast<std::uint32_t>(4 + part.size()));
                         return true;
                     });
        cards_.push_back(card);
    }
}

CardBytes CardSurvey::Read(const CardCell &card) const
{
    std::vector<std::uint8_t> buffer;
    const Bytes page = reader_.Read(card.page, buffer);
    const auto cell = ReadLeafCell(page, reader_.Geometry().usable, card.offset);
    const std::uint32_t localEnd =
        std::min({cell->local + cell->localSize, card.end, reader_.Present(card.page)});
    const Bytes local = page.subspan(cell->local, localEnd - std::min(localEnd, cell->local));
    CardBytes record;
    record.bytes.assign(local.begin(), local.end());
    if (local.size() == cell->localSize)
        WalkOverflow(reader_, *cell, [&](std::uint32_t number, Bytes part) {
            // Where the chain is broken somewhere, a page that another card claims too is that card's.
            const bool foreign = !card.whole && claims_[number] > 1;
            if (foreign || (trees_.IsSound(number) && trees_.Kind(number) == PageKind::TableLeaf) ||
                record.bytes.size() > longestRecord)
                return false;
            record.bytes.insert(record.bytes.end(), part.begin(), part.end());
            return true;
        });
    if (const auto shape = ReadCardShape(record.bytes, cell->payload))
        record.shape = *shape;
    else
        record.bytes.clear();
    return record;
}
