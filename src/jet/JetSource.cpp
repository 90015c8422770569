// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetSource.h"

#include "JetCards.h"
#include "SalvagedSource.h"

namespace paukfix {

namespace {

class JetSource final : public SalvagedSource
{
public:
    explicit JetSource(const QString &path) : SalvagedSource(path), cards_(path)
    {
        Begin(cards_.Cards(), cards_.Lost());
    }

private:
    std::optional<SalvagedCard> ReadCard(const CardPlan &plan) override { return cards_.Read(plan); }

    JetCards cards_;
};

} // namespace

std::unique_ptr<CardSource> OpenJetCards(const QString &path)
{
    return std::make_unique<JetSource>(path);
}

} // namespace paukfix
