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

// All cards whose bytes are still in a damaged database file, without those that the file itself shows to be deleted.
//
// A card counts when the table's tree leads to it or the index knows it. Any other card found in the pages counts
// only where the tree and the index are damaged too, so that they cannot tell, and its page is not free.
class CardSurvey
{
public:
    explicit CardSurvey(const PageReader &reader);

    const std::vector<CardCell> &Cards() const { return cards_; }
    const PageTrees &Trees() const { return trees_; }
    // Reads a found card; the bytes end where its chain of pages breaks.
    CardBytes Read(const CardCell &card) const;

private:
    void AddCards(const std::vector<CardCell> &found);
    void SearchUnclaimedPages();
    bool MayVisit(std::uint32_t page) const;

    const PageReader &reader_;
    PageTrees trees_;
    std::vector<CardCell> cards_;
    std::vector<std::uint8_t> claims_; // by page: how many cards say that a part of them is there
};
