// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSalvage.h"

#include "FachInfo.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <tuple>
#include <unordered_set>

namespace {

// So many copies of one card are looked at; a forged file may hold any number.
constexpr std::size_t mostCopies = 16;
constexpr int MostNumber = std::numeric_limits<std::int16_t>::max();

// Greater is better: which of two cards keeps the number that both bear.
auto NumberRank(const CardPlan &plan)
{
    const CardCell &cell = plan.cell;
    return std::tuple(cell.confirmed, cell.whole, cell.reached, cell.rowid);
}

std::optional<int> Compartment(double value)
{
    const auto compartment = Whole16(value);
    return compartment && *compartment >= FachNeu && *compartment <= FachErledigt ? compartment
                                                                                  : std::nullopt;
}

// Cards and places are counted from 1; anything below is believed only where an index says the same.
std::optional<int> Key(double value, bool inIndex)
{
    const auto key = Whole16(value);
    return key && (*key >= 1 || inIndex) ? key : std::nullopt;
}

void RemarkChange(CardPlan &plan, const QString &text)
{
    plan.remarks.push_back({Remark::Kind::Changed, text});
}

} // namespace

CardSalvage::CardSalvage(const CardSurvey &survey, EngineReader &engine)
    : survey_(survey), engine_(engine), encoding_(FindEncoding(survey))
{
    std::vector<CardPlan> candidates;
    std::unordered_set<std::int64_t> rows;
    std::unordered_set<int> numbers;
    for (const CardCell &cell : survey.Cards()) {
        candidates.push_back({cell, 0, 0, 0, {}});
        rows.insert(cell.rowid);
        if (const auto number = Whole16(cell.number))
            numbers.insert(*number);
    }
    for (const CardCell &cell : engine.Cards())
        if (!rows.contains(cell.rowid) && numbers.insert(*Whole16(cell.number)).second)
            candidates.push_back({cell, 0, 0, 0, {}});
    GiveNumbers(std::move(candidates));
    GivePlaces();
}

int CardSalvage::WholeCards() const
{
    return static_cast<int>(
        std::count_if(plans_.begin(), plans_.end(), [](const CardPlan &plan) { return plan.cell.whole; }));
}

void CardSalvage::GiveNumbers(std::vector<CardPlan> candidates)
{
    const auto &known = survey_.Trees().Numbers();
    const auto numberOfRow = [&](const CardCell &cell) {
        const auto entry = known.find(cell.rowid);
        return entry == known.end() ? std::nullopt : Whole16(entry->second);
    };

    std::map<int, std::vector<CardPlan>> byNumber;
    std::vector<CardPlan> without;
    for (CardPlan &plan : candidates) {
        if (const auto number = Key(plan.cell.number, plan.cell.confirmed))
            byNumber[*number].push_back(std::move(plan));
        else
            without.push_back(std::move(plan));
    }
    for (auto &[number, plans] : byNumber) {
        // The best copy of every row, then the row that keeps the number.
        if (plans.size() > 1)
            SortCopies(plans);
        plans.erase(std::unique(plans.begin(), plans.end(),
                                [](const CardPlan &one, const CardPlan &other) {
                                    return one.cell.rowid == other.cell.rowid;
                                }),
                    plans.end());
        std::sort(plans.begin(), plans.end(), [](const CardPlan &one, const CardPlan &other) {
            return NumberRank(one) > NumberRank(other);
        });
        plans.front().number = number;
        if (const auto inIndex = numberOfRow(plans.front().cell); inIndex && *inIndex != number)
            plans.front().remarks.push_back(
                {Remark::Kind::Doubtful,
                 QStringLiteral("der Index nennt die Nummer %1 für sie").arg(*inIndex)});
        for (std::size_t i = 1; i < plans.size(); ++i)
            if (!SameContent(plans.front(), plans[i]))
                without.push_back(std::move(plans[i]));
        plans_.push_back(std::move(plans.front()));
    }

    std::vector<CardPlan> fresh;
    std::set<int> taken;
    for (const CardPlan &plan : plans_)
        taken.insert(plan.number);
    for (CardPlan &plan : without) {
        const auto number = numberOfRow(plan.cell);
        if (!number || !taken.insert(*number).second) {
            fresh.push_back(std::move(plan));
            continue;
        }
        plan.number = *number;
        RemarkChange(plan, QStringLiteral("Nummer war unbrauchbar und kommt aus dem Index"));
        plans_.push_back(std::move(plan));
    }
    GiveFreshNumbers(fresh);
    std::sort(plans_.begin(), plans_.end(),
              [](const CardPlan &one, const CardPlan &other) { return one.number < other.number; });
}

// By row, the best copy of each first.
void CardSalvage::SortCopies(std::vector<CardPlan> &plans) const
{
    const auto byRank = [](const CardPlan &one, const CardPlan &other) {
        const auto rank = [](const CardCell &cell) {
            return std::tuple(cell.whole, cell.reached, cell.placed, cell.pointed, cell.page, cell.offset);
        };
        return one.cell.rowid != other.cell.rowid ? one.cell.rowid < other.cell.rowid
                                                  : rank(one.cell) > rank(other.cell);
    };
    std::sort(plans.begin(), plans.end(), byRank);
    plans.resize(std::min(plans.size(), mostCopies));
    // Of equally whole copies the one whose content looks right stands first, else all stay in their order.
    std::vector<std::tuple<std::int64_t, bool, std::size_t, CardPlan>> judged;
    for (CardPlan &plan : plans) {
        auto card = ReadValues(plan.cell);
        if (card)
            CheckContent(*card);
        const std::size_t doubts = card ? card->remarks.size() : 0;
        judged.emplace_back(plan.cell.rowid, !plan.cell.whole, doubts, std::move(plan));
    }
    std::stable_sort(judged.begin(), judged.end(), [](const auto &one, const auto &other) {
        return std::tie(std::get<0>(one), std::get<1>(one), std::get<2>(one)) <
               std::tie(std::get<0>(other), std::get<1>(other), std::get<2>(other));
    });
    plans.clear();
    for (auto &entry : judged)
        plans.push_back(std::move(std::get<3>(entry)));
}

std::optional<SalvagedCard> CardSalvage::ReadValues(const CardCell &cell) const
{
    return cell.page == 0 ? engine_.Read(cell.rowid) : DecodeCard(survey_.Read(cell), encoding_);
}

void CardSalvage::GiveFreshNumbers(std::vector<CardPlan> &without)
{
    std::set<int> taken;
    for (const CardPlan &plan : plans_)
        taken.insert(plan.number);
    int next = taken.empty() ? 1 : std::max(*taken.rbegin() + 1, 1);
    for (CardPlan &plan : without) {
        if (next > MostNumber)
            for (next = 1; taken.contains(next);)
                ++next;
        if (next > MostNumber)
            return; // no number is free
        plan.number = next;
        taken.insert(next++);
        while (taken.contains(next))
            ++next;
        const QString old =
            std::isnan(plan.cell.number) ? QString() : QStringLiteral(" (%1)").arg(plan.cell.number);
        RemarkChange(plan,
                     QStringLiteral("Nummer%1 war unbrauchbar oder schon vergeben, neu vergeben").arg(old));
        plans_.push_back(std::move(plan));
    }
}

bool CardSalvage::SameContent(const CardPlan &one, const CardPlan &other) const
{
    if (one.cell.page == 0 || other.cell.page == 0)
        return false;
    const CardBytes first = survey_.Read(one.cell), second = survey_.Read(other.cell);
    // Behind the keys, which may have changed, all values are the same.
    constexpr std::size_t firstValue = 3;
    return one.cell.whole && other.cell.whole &&
           std::equal(first.shape.types.begin() + firstValue, first.shape.types.end(),
                      second.shape.types.begin() + firstValue) &&
           std::equal(first.bytes.begin() + static_cast<std::ptrdiff_t>(first.shape.offsets[firstValue]),
                      first.bytes.end(),
                      second.bytes.begin() + static_cast<std::ptrdiff_t>(second.shape.offsets[firstValue]),
                      second.bytes.end());
}

void CardSalvage::GivePlaces()
{
    const auto &known = survey_.Trees().Places();
    std::map<std::pair<int, int>, CardPlan *> taken; // by compartment and place
    std::vector<CardPlan *> toBack;
    const auto demand = [&](CardPlan &plan) {
        const auto [owner, isNew] = taken.try_emplace({plan.compartment, plan.place}, &plan);
        if (isNew)
            return;
        // plans_ runs by number, so the owner's number is the lower one
        const bool takesOver = plan.cell.placed && !owner->second->cell.placed;
        toBack.push_back(takesOver ? std::exchange(owner->second, &plan) : &plan);
    };
    for (CardPlan &plan : plans_) {
        auto compartment = Compartment(plan.cell.compartment);
        auto place = Key(plan.cell.place, plan.cell.placed);
        if (!compartment || !place) {
            const auto entry = known.find(plan.cell.rowid);
            const auto known1 = entry == known.end() ? std::nullopt : Compartment(entry->second.compartment);
            const auto known2 = entry == known.end() ? std::nullopt : Whole16(entry->second.place);
            if (known1 && known2 && (!compartment || compartment == known1) && (!place || place == known2)) {
                compartment = known1;
                place = known2;
                RemarkChange(plan, QStringLiteral("Fach war unbrauchbar und kommt aus dem Index"));
            }
        }
        if (!compartment)
            RemarkChange(plan, QStringLiteral("Fach war unbrauchbar, liegt jetzt in „Neu“"));
        plan.compartment = compartment.value_or(FachNeu);
        if (compartment && place) {
            plan.place = *place;
            demand(plan);
        } else {
            toBack.push_back(&plan);
        }
    }
    std::sort(toBack.begin(), toBack.end(),
              [](const CardPlan *one, const CardPlan *other) { return one->number < other->number; });
    std::array<int, FachAnzahl> last{};
    for (const auto &[key, plan] : taken)
        last[static_cast<std::size_t>(key.first)] =
            std::max(last[static_cast<std::size_t>(key.first)], key.second);
    for (CardPlan *plan : toBack) {
        plan->place = ++last[static_cast<std::size_t>(plan->compartment)];
        RemarkChange(*plan,
                     QStringLiteral("Platz war unbrauchbar oder besetzt, liegt jetzt hinten in Fach %1")
                         .arg(plan->compartment));
    }
    for (int compartment = 0; compartment < FachAnzahl; ++compartment)
        if (last[static_cast<std::size_t>(compartment)] > MostNumber)
            CloseUp(compartment);
}

// Numbers the cards of a compartment anew without gaps, in their order.
void CardSalvage::CloseUp(int compartment)
{
    std::vector<CardPlan *> cards;
    for (CardPlan &plan : plans_)
        if (plan.compartment == compartment)
            cards.push_back(&plan);
    std::sort(cards.begin(), cards.end(),
              [](const CardPlan *one, const CardPlan *other) { return one->place < other->place; });
    int place = std::min(1, MostNumber + 1 - static_cast<int>(cards.size()));
    for (CardPlan *plan : cards)
        plan->place = place++;
}

std::optional<SalvagedCard> CardSalvage::Read(const CardPlan &plan) const
{
    auto card = ReadValues(plan.cell);
    if (!card || (!plan.cell.whole && !card->HasText()))
        return std::nullopt;
    card->values[0] = static_cast<double>(plan.number);
    card->values[1] = static_cast<double>(plan.compartment);
    card->values[2] = static_cast<double>(plan.place);
    card->remarks.insert(card->remarks.begin(), plan.remarks.begin(), plan.remarks.end());
    CheckContent(*card);
    return card;
}

std::vector<int> CardSalvage::MissingNumbers() const
{
    std::unordered_set<std::int64_t> saved;
    for (const CardPlan &plan : plans_)
        saved.insert(plan.cell.rowid);
    std::set<int> missing;
    for (const auto &[row, number] : survey_.Trees().Numbers())
        if (const auto whole = Whole16(number); whole && !saved.contains(row))
            missing.insert(*whole);
    for (const CardPlan &plan : plans_)
        missing.erase(plan.number);
    return {missing.begin(), missing.end()};
}
