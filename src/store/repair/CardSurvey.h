// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardCells.h"
#include "PageTrees.h"

#include <vector>

// The record of a card, as far as its bytes are still there.
struct CardBytes
{
    std::vector<std::uint8_t> bytes;
    CardShape shape;
};

// All cards whose bytes are still in a damaged database file, without those that the file itself shows to be
// deleted.
//
// A card counts when the table's tree leads to it or the index knows it. Any other card found in the pages
// counts unless its page is free or what is left of tree and index proves it stale: one of them is whole and
// the other one, as far as it reaches, agrees with it.
class CardSurvey
{
public:
    explicit CardSurvey(const PageReader &reader);

    const std::vector<CardCell> &Cards() const { return cards_; }

    const PageTrees &Trees() const { return trees_; }

    // Reads a found card; the bytes end where its chain of pages breaks.
    CardBytes Read(const CardCell &card) const;

private:
    std::vector<CardCell> FindIn(std::uint32_t page) const;
    void CompareWithIndexes(CardCell &card) const;
    bool IndexProves(const std::vector<CardCell> &found) const;
    bool TableProves(const std::vector<CardCell> &found) const;
    void Take(const std::vector<CardCell> &found);
    bool MayVisit(std::uint32_t page) const;

    const PageReader &reader_;
    PageTrees trees_;
    std::vector<CardCell> cards_;
    bool othersAreStale_ = false;
    // By page: how many cards say that a part of them is there, and where the longest of these parts ends.
    std::vector<std::uint8_t> claims_;
    std::vector<std::uint32_t> claimedEnds_;
};
