// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSurvey.h"

#include <algorithm>
#include <unordered_set>

namespace paukfix {

namespace {

// Far more than a card file holds; what a forged file has beyond is left out, so that memory stays bounded.
constexpr std::size_t MostCards = 150'000;
// A page that so many cards claim ends their chains, so that forged chains cost no more than linear time.
constexpr std::uint8_t MostClaims = 8;
// So much of one record is read at most; a card beyond that is told to be cut.
constexpr std::size_t LongestRecord = 64'000'000;

} // namespace

CardSurvey::CardSurvey(const PageReader &reader, const Progress &progress)
    : reader_(reader),
      trees_(reader, progress),
      indexes_(reader, trees_, progress),
      claims_(reader.PageCount() + 1),
      claimedEnds_(reader.PageCount() + 1),
      claimedBySure_(reader.PageCount() + 1)
{
    for (const bool leaves : {true, false}) {
        std::vector<CardCell> found;
        for (std::uint32_t number = reader.NextPage(0); number != 0 && found.size() < MostCards;
             number = reader.NextPage(number)) {
            Melden(progress, static_cast<int>(number), static_cast<int>(reader.PageCount()));
            const bool isLeaf = trees_.Kind(number) == PageKind::TableLeaf;
            if (isLeaf != leaves || trees_.InOther(number) || (!isLeaf && trees_.IsSound(number)))
                continue;
            const std::vector<CardCell> cards = FindIn(number);
            for (const CardCell &card : cards)
                rowsSeen_.insert(card.rowid);
            found.insert(found.end(), cards.begin(), cards.end());
            if (isLeaf && trees_.IsWhole(number) && !cards.empty())
                AddRowGaps(number);
        }
        if (leaves)
            LookAtLeaves(found);
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
    const auto number = indexes_.Numbers().find(card.rowid);
    card.reached = card.pointed && trees_.InTable(card.page, card.rowid);
    card.confirmed = number != indexes_.Numbers().end() && number->second == card.number;
    card.free = treeComplete_ && trees_.IsFree(card.page);
    card.placed = indexes_.KnowsPlace(card.rowid, {card.compartment, card.place});
}

void CardSurvey::AddRowGaps(std::uint32_t number)
{
    std::vector<std::uint8_t> buffer;
    const Bytes page = reader_.Read(number, buffer);
    std::vector<double> rows;
    for (const std::uint32_t offset : BTreePage(page, number, reader_.Geometry()).CellOffsets()) {
        const auto cell = ReadLeafCell(page, reader_.Geometry().usable, offset);
        if (!cell || !LooksLikeCard(page.subspan(cell->local, cell->localSize), cell->payload))
            return;
        rows.push_back(static_cast<double>(cell->rowid));
    }
    rowGaps_.AddPage(rows);
}

// What all cards together tell of the trees.
void CardSurvey::LookAtLeaves(std::vector<CardCell> &found)
{
    rowGaps_.Finish();
    std::unordered_set<std::int64_t> reached;
    indexComplete_ = trees_.NumbersWhole();
    for (const CardCell &card : found) {
        if (card.reached)
            reached.insert(card.rowid);
        if (card.confirmed)
            confirmedNumbers_.insert(card.number);
        if (card.pointed && trees_.IsSound(card.page) && (card.reached || trees_.IsWiped()))
            indexComplete_ = indexComplete_ && card.confirmed;
    }
    treeComplete_ = !trees_.HasGrown();
    for (const CardCell &card : found)
        if (card.pointed && trees_.IsSound(card.page) && !card.reached &&
            (trees_.InTable(card.page) || (card.confirmed && !card.free && !reached.contains(card.rowid) &&
                                           trees_.IsSound(trees_.LeafOf(card.rowid)))))
            treeComplete_ = false;
    for (const CardCell &card : found)
        if (IsInUse(card) && !indexes_.Numbers().contains(card.rowid) && !indexes_.DeniesNumber(card.number))
            indexLacks_ = true;
    std::unordered_map<std::uint32_t, std::uint32_t> faults;
    for (CardCell &card : found) {
        card.free = card.free && treeComplete_;
        if (card.pointed && (!card.placed || IsStale(card)))
            ++faults[card.page];
    }
    for (CardCell &card : found)
        if (const auto count = faults.find(card.page); count != faults.end())
            card.pageFaults = count->second;
}

bool CardSurvey::IsDeleted(std::int64_t row, double number) const
{
    if (indexes_.TreeKnows(number) && !trees_.IsSound(trees_.LeafOf(row)))
        return false; // the index has it, and the page that should is damaged
    return rowGaps_.Contains(static_cast<double>(row)) || indexes_.DeniesNumber(number);
}

bool CardSurvey::IsInUse(const CardCell &card) const
{
    return card.pointed && trees_.IsSound(card.page) &&
           (card.reached || trees_.IsWiped() || (!treeComplete_ && !card.free));
}

bool CardSurvey::IsStale(const CardCell &card) const
{
    const auto entry = indexes_.Numbers().find(card.rowid);
    if (!card.confirmed && entry != indexes_.Numbers().end())
        return false; // its number is damaged, or the index's
    // The highest numbers are given again when their cards were deleted, so that a page which lacks one
    // between two others may be the older one: where two of the tree and the two indexes know the card, it
    // counts, and where its page is in use while the index lacks other such cards too.
    if (indexes_.DeniesNumber(card.number))
        return card.reached + card.confirmed + card.placed < 2 && !(IsInUse(card) && indexLacks_);
    if (card.confirmed)
        return false;
    if (!card.pointed && indexComplete_)
        return true;
    return !card.reached && (rowGaps_.Contains(static_cast<double>(card.rowid)) ||
                             confirmedNumbers_.contains(card.number) || card.free);
}

bool CardSurvey::IsUncertain(const CardCell &card) const
{
    if (indexes_.DeniesNumber(card.number))
        return true;
    if (indexes_.Numbers().contains(card.rowid))
        return false;
    // Where all is wiped that is deleted, a page still leads to what counts.
    return indexes_.Covers(card.number) || (trees_.IsWiped() ? !card.pointed : !card.reached);
}

bool CardSurvey::MayVisit(std::uint32_t page, bool sure) const
{
    // A sound leaf page is no part of a text, whatever a damaged chain says, and a page that a card which the
    // index knows has in use is no part of one that may be of an older state.
    return !(trees_.IsSound(page) && trees_.Kind(page) == PageKind::TableLeaf) &&
           claims_[page] < MostClaims && (sure || !claimedBySure_[page]);
}

void CardSurvey::Take(const std::vector<CardCell> &found)
{
    const auto isSure = [](const CardCell &card) { return card.confirmed && card.pointed; };
    for (const bool sure : {true, false})
        for (const CardCell &card : found)
            if (isSure(card) == sure && !IsStale(card))
                TakeOne(card, sure);
}

void CardSurvey::TakeOne(CardCell card, bool sure)
{
    std::vector<std::uint8_t> buffer;
    reader_.Read(card.page, buffer);
    const auto cell = ReadLeafCell(buffer, reader_.Geometry().usable, card.offset);
    card.doubted = trees_.HasWrongSum(card.page);
    // What a failing medium has given once it may not give again.
    card.whole =
        cell && cell->rowid == card.rowid && !card.overwritten && cell->end <= reader_.Present(card.page) &&
        WalkOverflow(reader_, *cell, [&](std::uint32_t page, Bytes part) {
            if (!MayVisit(page, sure))
                return false;
            card.doubted = card.doubted || trees_.HasWrongSum(page);
            ++claims_[page];
            claimedBySure_[page] = claimedBySure_[page] || sure;
            claimedEnds_[page] = std::max(claimedEnds_[page], static_cast<std::uint32_t>(4 + part.size()));
            return true;
        });
    card.uncertain = IsUncertain(card);
    cards_.push_back(card);
}

CardBytes CardSurvey::Read(const CardCell &card) const
{
    std::vector<std::uint8_t> buffer;
    const Bytes page = reader_.Read(card.page, buffer);
    const auto cell = ReadLeafCell(page, reader_.Geometry().usable, card.offset);
    if (!cell)
        return {};
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
                record.bytes.size() > LongestRecord)
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

} // namespace paukfix
