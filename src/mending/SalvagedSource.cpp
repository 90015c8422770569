// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SalvagedSource.h"

#include <algorithm>
#include <tuple>

namespace paukfix {

using namespace Qt::StringLiterals;

void SalvagedSource::Begin(const std::vector<CardPlan> &cards, qint64 lost)
{
    losses_.lost = lost;
    plans_.reserve(cards.size());
    for (const CardPlan &plan : cards)
        plans_.push_back(&plan);
    std::sort(plans_.begin(), plans_.end(), [](const CardPlan *one, const CardPlan *other) {
        return std::tie(one->compartment, one->place) < std::tie(other->compartment, other->place);
    });
}

bool SalvagedSource::Next()
{
    card_.reset();
    while (!card_ && next_ < plans_.size()) {
        card_ = ReadCard(*plans_[next_++]);
        if (!card_)
            ++losses_.lost;
    }
    return card_.has_value();
}

void SalvagedSource::Read(int column, CopiedValue &value)
{
    const SalvagedCard::Value &from = card_->values[static_cast<std::size_t>(column)];
    if (const auto *text = std::get_if<QByteArray>(&from)) {
        value.text.assign(text->constData(), static_cast<std::size_t>(text->size()));
        value.kind = CopiedValue::Kind::Text;
    } else if (const auto *number = std::get_if<double>(&from)) {
        value.number = *number;
        value.kind = CopiedValue::Kind::Number;
    } else {
        value.kind = CopiedValue::Kind::Null;
    }
}

void SalvagedSource::Taken()
{
    losses_.Add(*card_);
}

std::optional<StoreError> SalvagedSource::DamageFound(int taken) const
{
    const QString text = LossText(taken, u"übernommen"_s, losses_);
    return text.isEmpty() ? std::nullopt : std::optional(StoreError(Fehler::Beschaedigt, IsDamaged() + text));
}

QString SalvagedSource::IsDamaged() const
{
    return u"Die Datei „%1“ ist beschädigt. "_s.arg(path_);
}

} // namespace paukfix
