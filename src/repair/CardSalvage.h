// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardKeys.h"
#include "CardSurvey.h"
#include "CardText.h"
#include "EngineReader.h"

#include <QString>

#include <vector>

namespace paukfix {

// Decides which of the found cards go into the repaired file, and under which keys.
//
// Of several copies of one row the best is taken: whole before broken, then the one on pages that fit their
// sums, then the one whose content looks right, then the one that the table's tree leads to. GiveKeys() tells
// how the cards get their keys.
class CardSalvage final : private CardWitness
{
public:
    CardSalvage(const CardSurvey &survey, EngineReader &engine);

    // In order of FrageNr.
    const std::vector<CardPlan> &Cards() const { return plans_; }

    // Cards whose record is not broken.
    int WholeCards() const;
    // The values of a planned card under its keys, with all remarks; nothing where no text of it is left.
    std::optional<SalvagedCard> Read(const CardPlan &plan) const;
    // Numbers that the index names and no planned card bears, ascending.
    std::vector<int> MissingNumbers() const;

private:
    std::optional<int> NumberOf(const FoundCard &card) const override;
    std::optional<Place> PlaceOf(const FoundCard &card) const override;
    void SortCopies(std::vector<CardPlan> &plans) const override;
    bool SameContent(const CardPlan &one, const CardPlan &other) const override;
    const CardCell &CellOf(const FoundCard &card) const;
    bool SameRecord(const CardCell &one, const CardCell &other) const;
    std::optional<SalvagedCard> ReadValues(const CardCell &cell) const;

    const CardSurvey &survey_;
    EngineReader &engine_;
    TextEncoding encoding_;
    std::vector<CardPlan> plans_;
};

} // namespace paukfix
