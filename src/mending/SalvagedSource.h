// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardKeys.h"
#include "CardSource.h"
#include "RepairReport.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace paukfix {

// The cards of a file that is read without the engine, copied under no keys: what is known of the cards that
// damage has taken away or left in doubt is told as error 3049.
class SalvagedSource : public CardSource
{
public:
    int Count() const final { return static_cast<int>(plans_.size()); }

    bool Next() final;
    void Read(int column, CopiedValue &value) final;
    void Taken() final;
    std::optional<StoreError> DamageFound(int taken) const final;

protected:
    // `path` is named in the texts.
    explicit SalvagedSource(QString path) : path_(std::move(path)) {}

    // What the reader has found: `cards`, which must last, and so many more that it could not find.
    void Begin(const std::vector<CardPlan> &cards, qint64 lost);

    // The beginning of a sentence that is to follow; ends in a blank.
    QString IsDamaged() const;

private:
    // Nothing where no text of the card is left.
    virtual std::optional<SalvagedCard> ReadCard(const CardPlan &plan) = 0;

    QString path_;
    std::vector<const CardPlan *> plans_; // in box order
    std::size_t next_ = 0;
    std::optional<SalvagedCard> card_;
    Losses losses_;
};

} // namespace paukfix
