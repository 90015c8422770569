// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSalvage.h"

#include "TextContradictions.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_set>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// So many copies of one card are looked at; a forged file may hold any number.
constexpr std::size_t MostCopies = 16;

} // namespace

CardSalvage::CardSalvage(const CardSurvey &survey, EngineReader &engine)
    : survey_(survey), engine_(engine), encoding_(FindEncoding(survey))
{
    std::vector<CardPlan> candidates;
    std::unordered_set<int> numbers;
    std::size_t source = 0;
    const auto add = [&](const FoundCard &card) {
        candidates.push_back({card, 0, 0, 0, {}});
        candidates.back().card.source = source;
    };
    for (const CardCell &cell : survey.Cards()) {
        add(cell);
        ++source;
        if (const auto number = Whole16(cell.number))
            numbers.insert(*number);
    }
    for (const CardCell &cell : engine.Cards()) {
        const auto number = Whole16(cell.number);
        if (!survey.HasSeen(cell.rowid) && (!number || numbers.insert(*number).second))
            add(cell);
        ++source;
    }
    plans_ = GiveKeys(std::move(candidates), *this);
}

const CardCell &CardSalvage::CellOf(const FoundCard &card) const
{
    const std::size_t surveyed = survey_.Cards().size();
    return card.source < surveyed ? survey_.Cards()[card.source] : engine_.Cards()[card.source - surveyed];
}

int CardSalvage::WholeCards() const
{
    return static_cast<int>(
        std::count_if(plans_.begin(), plans_.end(), [](const CardPlan &plan) { return plan.card.whole; }));
}

std::optional<int> CardSalvage::NumberOf(const FoundCard &card) const
{
    const auto &known = survey_.Indexes().Numbers();
    const auto entry = known.find(card.rowid);
    return entry == known.end() ? std::nullopt : Whole16(entry->second);
}

std::optional<CardWitness::Place> CardSalvage::PlaceOf(const FoundCard &card) const
{
    const auto known = survey_.Indexes().PlaceOf(card.rowid);
    if (!known)
        return std::nullopt;
    const auto compartment = WholeCompartment(known->compartment);
    const auto place = Whole16(known->place);
    return compartment && place ? std::optional(Place{*compartment, *place}) : std::nullopt;
}

void CardSalvage::SortCopies(std::vector<CardPlan> &plans) const
{
    // Without the engine's leave a page of an older state may stand for a newer one: then what the index
    // "BoxKey" says of the card and of its page tells more than the tree.
    const auto key = [this](const CardCell &cell) {
        return std::tuple(cell.pointed, !cell.free, cell.reached && survey_.TreeComplete(), cell.placed,
                          -static_cast<std::int64_t>(cell.pageFaults));
    };
    const auto byRank = [&](const CardPlan &one, const CardPlan &other) {
        const auto rank = [&](const CardCell &cell) {
            return std::tuple(cell.whole, key(cell), cell.page, cell.offset);
        };
        return one.card.rowid != other.card.rowid ? one.card.rowid < other.card.rowid
                                                  : rank(CellOf(one.card)) > rank(CellOf(other.card));
    };
    std::sort(plans.begin(), plans.end(), byRank);
    plans.resize(std::min(plans.size(), MostCopies));
    // Of equally whole copies the one whose pages fit their sums stands first, then the one whose content
    // looks right, else all stay in their order.
    using Rank = std::tuple<std::int64_t, bool, bool, std::size_t>;
    std::vector<std::pair<Rank, CardPlan>> judged;
    for (CardPlan &plan : plans) {
        auto card = ReadValues(CellOf(plan.card));
        if (card) {
            CheckContent(*card);
            RemarkContradictions(*card);
        }
        const std::size_t doubts = card ? card->remarks.size() : 0;
        const Rank rank{plan.card.rowid, !plan.card.whole, CellOf(plan.card).doubted, doubts};
        judged.emplace_back(rank, std::move(plan));
    }
    std::stable_sort(judged.begin(), judged.end(),
                     [](const auto &one, const auto &other) { return one.first < other.first; });
    std::size_t best = 0;
    for (std::size_t i = 1; i < judged.size(); ++i) {
        FoundCard &first = judged[best].second.card;
        const CardCell &rival = CellOf(judged[i].second.card);
        if (first.rowid != rival.rowid)
            best = i;
        else if (rival.whole && (!survey_.IsWiped() || (!rival.free && survey_.MayBeInUse(rival))) &&
                 !SameRecord(CellOf(first), rival))
            first.disputed = true;
    }
    plans.clear();
    for (auto &entry : judged)
        plans.push_back(std::move(entry.second));
}

std::optional<SalvagedCard> CardSalvage::ReadValues(const CardCell &cell) const
{
    return cell.page == 0 ? engine_.Read(cell.rowid) : DecodeCard(survey_.Read(cell), encoding_);
}

bool CardSalvage::SameRecord(const CardCell &one, const CardCell &other) const
{
    return one.page != 0 && other.page != 0 && survey_.Read(one).bytes == survey_.Read(other).bytes;
}

bool CardSalvage::SameContent(const CardPlan &one, const CardPlan &other) const
{
    const CardCell &oneCell = CellOf(one.card), &otherCell = CellOf(other.card);
    if (oneCell.page == 0 || otherCell.page == 0)
        return false;
    const CardBytes first = survey_.Read(oneCell), second = survey_.Read(otherCell);
    // Behind the keys, which may have changed, all values are the same.
    constexpr std::size_t FirstValue = 3;
    const auto isThere = [](const CardBytes &record) {
        return record.shape.offsets[FirstValue] <= record.bytes.size();
    };
    return one.card.whole && other.card.whole && isThere(first) && isThere(second) &&
           std::equal(first.shape.types.begin() + FirstValue, first.shape.types.end(),
                      second.shape.types.begin() + FirstValue) &&
           std::equal(first.bytes.begin() + static_cast<std::ptrdiff_t>(first.shape.offsets[FirstValue]),
                      first.bytes.end(),
                      second.bytes.begin() + static_cast<std::ptrdiff_t>(second.shape.offsets[FirstValue]),
                      second.bytes.end());
}

std::optional<SalvagedCard> CardSalvage::Read(const CardPlan &plan) const
{
    auto card = ReadValues(CellOf(plan.card));
    if (!card || (!plan.card.whole && !card->HasText()))
        return std::nullopt;
    ApplyKeys(*card, plan);
    CheckContent(*card);
    if (plan.card.whole)
        RemarkContradictions(*card);
    if (CellOf(plan.card).doubted)
        card->remarks.push_back(
            {Remark::Kind::Doubtful, u"steht auf einer Seite, deren Prüfsumme nicht stimmt"_s});
    if (plan.card.disputed)
        card->remarks.push_back({Remark::Kind::Uncertain,
                                 u"stand in zwei Fassungen in der Datei, dies ist vielleicht die ältere"_s});
    if (plan.card.uncertain)
        card->remarks.push_back({Remark::Kind::Uncertain, u"war vielleicht schon gelöscht"_s});
    return card;
}

std::vector<int> CardSalvage::MissingNumbers() const
{
    std::unordered_set<std::int64_t> saved;
    for (const CardPlan &plan : plans_)
        saved.insert(plan.card.rowid);
    std::set<int> missing;
    for (const auto &[row, number] : survey_.Indexes().Numbers())
        if (const auto whole = Whole16(number);
            whole && !saved.contains(row) && !survey_.IsDeleted(row, number))
            missing.insert(*whole);
    for (const CardPlan &plan : plans_)
        missing.erase(plan.number);
    return {missing.begin(), missing.end()};
}

} // namespace paukfix
