// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSurvey.h"

#include <algorithm>

namespace {

// Far more than a card file holds; what a forged file has beyond is left out, so that memory stays bounded.
constexpr std::size_t mostCards = 500'000;
// A page that so many cards claim ends their chains, so that forged chains cost no more than linear time.
constexpr std::uint8_t mostClaims = 8;
// So much of one record is read at most; a card beyond that is told to be cut.
constexpr std::size_t longestRecord = 64'000'000;

} // namespace

CardSurvey::CardSurvey(const PageReader &reader)
    : reader_(reader)
    , trees_(reader)
    , claims_(reader.PageCount() + 1)
{
    std::vector<std::uint8_t> buffer;
    for (std::uint32_t number = 1; number <= reader_.PageCount(); ++number) {
        if (trees_.Kind(number) != PageKind::TableLeaf || trees_.InOther(number))
            continue;
        const Bytes page = reader_.Read(number, buffer);
        const std::vector<CardCell> pointed = PointedCards(reader_, page, number);
        AddCards(pointed);
        if (!trees_.IsSound(number))
            AddCards(SearchCards(reader_, page, number, pointed));
    }
    SearchUnclaimedPages();
}

bool CardSurvey::MayVisit(std::uint32_t page) const
{
    // A sound leaf page is no part of a text, whatever a damaged chain says.
    return !(trees_.IsSound(page) && trees_.Kind(page) == PageKind::TableLeaf) && claims_[page] < mostClaims;
}

void CardSurvey::AddCards(const std::vector<CardCell> &found)
{
    std::vector<std::uint8_t> buffer;
    for (CardCell card : found) {
        if (cards_.size() >= mostCards)
            return;
        const auto number = trees_.Numbers().find(card.rowid);
        const auto place = trees_.Places().find(card.rowid);
        card.reached = trees_.InTable(card.page);
        card.confirmed = number != trees_.Numbers().end() && number->second == card.number;
        card.placed = place != trees_.Places().end() && place->second.compartment == card.compartment
            && place->second.place == card.place;
        const bool provedStale = trees_.IsFree(card.page) || trees_.TableWhole() || trees_.NumbersWhole();
        if (!card.confirmed && !(card.reached && card.pointed) && provedStale)
            continue;

        const auto cell = ReadLeafCell(reader_.Read(card.page, buffer), reader_.Geometry().usable, card.offset);
        card.whole = cell->end <= reader_.Present(card.page)
            && WalkOverflow(reader_, *cell, [&](std::uint32_t page, Bytes) {
                         if (!MayVisit(page))
                             return false;
                         ++claims_[page];
                         return true;
                     });
        cards_.push_back(card);
    }
}

// A leaf page whose type was damaged is none of the known kinds any more, nor a part of any card.
void CardSurvey::SearchUnclaimedPages()
{
    std::vector<std::uint8_t> buffer;
    for (std::uint32_t number = 1; number <= reader_.PageCount(); ++number) {
        if (trees_.Kind(number) == PageKind::TableLeaf || trees_.IsSound(number) || claims_[number] != 0
            || trees_.InOther(number))
            continue;
        const Bytes page = reader_.Read(number, buffer);
        if (!AllZero(page))
            AddCards(SearchCards(reader_, page, number, {}));
    }
}

CardBytes CardSurvey::Read(const CardCell &card) const
{
    std::vector<std::uint8_t> buffer;
    const Bytes page = reader_.Read(card.page, buffer);
    const auto cell = ReadLeafCell(page, reader_.Geometry().usable, card.offset);
    const Bytes local = page.subspan(cell->local,
                                     std::min(cell->localSize, reader_.Present(card.page) - cell->local));
    CardBytes record;
    record.bytes.assign(local.begin(), local.end());
    if (local.size() == cell->localSize)
        WalkOverflow(reader_, *cell, [&](std::uint32_t number, Bytes part) {
            // Where the chain is broken somewhere, a page that another card claims too is that card's.
            const bool foreign = !card.whole && claims_[number] > 1;
            if (foreign || (trees_.IsSound(number) && trees_.Kind(number) == PageKind::TableLeaf)
                || record.bytes.size() > longestRecord)
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
