// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSurvey.h"
#include "EngineReader.h"
#include "SalvagedCard.h"

#include <QString>

#include <vector>

// A card that goes into the repaired file.
struct CardPlan
{
    CardCell cell;
    int number = 0;
    int compartment = 0;
    int place = 0;
    std::vector<Remark> remarks; // on its keys
};

// Decides which of the found cards go into the repaired file, and under which keys.
//
// Of several copies of one row the best is taken: whole before broken, then the one whose content looks
// right, then the one that the table's tree leads to. Two different cards with one FrageNr come from a
// damaged number: the one that the index knows keeps it, else the newer one; the other gets the number that
// the index knows for its row, else a new one. Two cards on one place of a compartment: the one that the
// index knows there stays, else the one with the lower number; the other goes to the compartment's back.
class CardSalvage
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
    void GiveNumbers(std::vector<CardPlan> candidates);
    void GiveFreshNumbers(std::vector<CardPlan> &without);
    void GivePlaces();
    void CloseUp(int compartment);
    void SortCopies(std::vector<CardPlan> &plans) const;
    std::optional<SalvagedCard> ReadValues(const CardCell &cell) const;
    bool SameContent(const CardPlan &one, const CardPlan &other) const;

    const CardSurvey &survey_;
    EngineReader &engine_;
    TextEncoding encoding_;
    std::vector<CardPlan> plans_;
};
