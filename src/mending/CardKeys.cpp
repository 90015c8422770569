// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardKeys.h"

#include "FachNummern.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <tuple>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostNumber = std::numeric_limits<std::int16_t>::max();

// Greater is better: which of two cards keeps the number that both bear.
auto NumberRank(const CardPlan &plan)
{
    const FoundCard &card = plan.card;
    return std::tuple(card.confirmed, card.whole, card.reached, card.rowid);
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

class KeyGiver
{
public:
    explicit KeyGiver(const CardWitness &witness) : witness_(witness) {}

    std::vector<CardPlan> Give(std::vector<CardPlan> candidates)
    {
        GiveNumbers(std::move(candidates));
        GivePlaces();
        return std::move(plans_);
    }

private:
    void GiveNumbers(std::vector<CardPlan> candidates);
    void GiveFreshNumbers(std::vector<CardPlan> &without);
    void GivePlaces();
    void CloseUp(int compartment);

    const CardWitness &witness_;
    std::vector<CardPlan> plans_;
};

void KeyGiver::GiveNumbers(std::vector<CardPlan> candidates)
{
    std::map<int, std::vector<CardPlan>> byNumber;
    std::vector<CardPlan> without;
    for (CardPlan &plan : candidates)
        if (const auto number = Key(plan.card.number, plan.card.confirmed))
            byNumber[*number].push_back(std::move(plan));
        else
            without.push_back(std::move(plan));
    for (auto &[number, plans] : byNumber) {
        // The best copy of every row, then the row that keeps the number.
        if (plans.size() > 1)
            witness_.SortCopies(plans);
        plans.erase(std::unique(plans.begin(), plans.end(),
                                [](const CardPlan &one, const CardPlan &other) {
                                    return one.card.rowid == other.card.rowid;
                                }),
                    plans.end());
        std::sort(plans.begin(), plans.end(), [](const CardPlan &one, const CardPlan &other) {
            return NumberRank(one) > NumberRank(other);
        });
        plans.front().number = number;
        if (const auto inIndex = witness_.NumberOf(plans.front().card); inIndex && *inIndex != number)
            plans.front().remarks.push_back(
                {Remark::Kind::Doubtful, u"der Index nennt die Nummer %1 für sie"_s.arg(*inIndex)});
        for (std::size_t i = 1; i < plans.size(); ++i)
            if (!witness_.SameContent(plans.front(), plans[i]))
                without.push_back(std::move(plans[i]));
        plans_.push_back(std::move(plans.front()));
    }

    std::vector<CardPlan> fresh;
    std::set<int> taken;
    for (const CardPlan &plan : plans_)
        taken.insert(plan.number);
    for (CardPlan &plan : without) {
        const auto number = witness_.NumberOf(plan.card);
        if (!number || !taken.insert(*number).second) {
            fresh.push_back(std::move(plan));
            continue;
        }
        plan.number = *number;
        RemarkChange(plan, u"Nummer war unbrauchbar und kommt aus dem Index"_s);
        plans_.push_back(std::move(plan));
    }
    GiveFreshNumbers(fresh);
    std::sort(plans_.begin(), plans_.end(),
              [](const CardPlan &one, const CardPlan &other) { return one.number < other.number; });
}

void KeyGiver::GiveFreshNumbers(std::vector<CardPlan> &without)
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
        const QString old = std::isnan(plan.card.number) ? QString() : u" (%1)"_s.arg(plan.card.number);
        RemarkChange(plan, u"Nummer%1 war unbrauchbar oder schon vergeben, neu vergeben"_s.arg(old));
        plans_.push_back(std::move(plan));
    }
}

void KeyGiver::GivePlaces()
{
    std::map<std::pair<int, int>, CardPlan *> taken; // by compartment and place
    std::vector<CardPlan *> toBack;
    const auto demand = [&](CardPlan &plan) {
        const auto [owner, isNew] = taken.try_emplace({plan.compartment, plan.place}, &plan);
        if (isNew)
            return;
        // plans_ runs by number, so the owner's number is the lower one
        const auto rank = [](const FoundCard &card) { return std::tuple(card.placed, !card.uncertain); };
        const bool takesOver = rank(plan.card) > rank(owner->second->card);
        toBack.push_back(takesOver ? std::exchange(owner->second, &plan) : &plan);
    };
    for (CardPlan &plan : plans_) {
        auto compartment = WholeCompartment(plan.card.compartment);
        auto place = Key(plan.card.place, plan.card.placed);
        if (!compartment || !place) {
            const auto known = witness_.PlaceOf(plan.card);
            if (known && (!compartment || compartment == known->compartment) &&
                (!place || place == known->place)) {
                compartment = known->compartment;
                place = known->place;
                RemarkChange(plan, u"Fach war unbrauchbar und kommt aus dem Index"_s);
            }
        }
        if (!compartment)
            RemarkChange(plan, u"Fach war unbrauchbar, liegt jetzt in „Neu“"_s);
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
        RemarkChange(*plan, u"Platz war unbrauchbar oder besetzt, liegt jetzt hinten in Fach %1"_s.arg(
                                plan->compartment));
    }
    for (int compartment = 0; compartment < FachAnzahl; ++compartment)
        if (last[static_cast<std::size_t>(compartment)] > MostNumber)
            CloseUp(compartment);
}

// Numbers the cards of a compartment anew without gaps, in their order.
void KeyGiver::CloseUp(int compartment)
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

} // namespace

std::optional<int> WholeCompartment(double value)
{
    const auto compartment = Whole16(value);
    return compartment && *compartment >= FachNeu && *compartment <= FachErledigt ? compartment
                                                                                  : std::nullopt;
}

std::vector<CardPlan> GiveKeys(std::vector<CardPlan> candidates, const CardWitness &witness)
{
    return KeyGiver(witness).Give(std::move(candidates));
}

void ApplyKeys(SalvagedCard &card, const CardPlan &plan)
{
    card.values[0] = static_cast<double>(plan.number);
    card.values[1] = static_cast<double>(plan.compartment);
    card.values[2] = static_cast<double>(plan.place);
    card.remarks.insert(card.remarks.begin(), plan.remarks.begin(), plan.remarks.end());
}

} // namespace paukfix
