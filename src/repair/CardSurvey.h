// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardCells.h"
#include "IndexEntries.h"
#include "KeyGaps.h"
#include "PageTrees.h"
#include "Progress.h"

#include <unordered_set>
#include <vector>

namespace paukfix {

// The record of a card, as far as its bytes are still there.
struct CardBytes
{
    std::vector<std::uint8_t> bytes;
    CardShape shape;
};

// All cards whose bytes are still in a damaged database file, without those that the file itself shows to be
// deleted.
//
// Every card that is found counts unless something proves it deleted, and a tree or an index proves nothing
// by what it lacks as a whole: its root may be of an older state, or a leaf. The proofs are two neighbours in
// the index or the table between which the card would stand, if not two of the tree and both indexes know it,
// another card that the index knows under its
// number, and, where what is deleted is not wiped, a place on the free list or in what a page does not use.
class CardSurvey
{
public:
    // Throws what `progress` throws.
    explicit CardSurvey(const PageReader &reader, const Progress &progress = {});

    const std::vector<CardCell> &Cards() const { return cards_; }

    const IndexEntries &Indexes() const { return indexes_; }

    const PageTrees &Trees() const { return trees_; }

    // Is what was deleted wiped in this file?
    bool IsWiped() const { return trees_.IsWiped(); }

    // Was the card with this row deleted, as its neighbours in the table or in the index show?
    bool IsDeleted(std::int64_t row, double number) const;

    // Was a card of this row found, be it one that counts or not?
    bool HasSeen(std::int64_t row) const { return rowsSeen_.contains(row); }

    // Does the card's page lead to it, as far as the page's own damage lets one tell?
    bool MayBeInUse(const CardCell &card) const { return card.pointed || !trees_.IsSound(card.page); }

    // Does the table's tree lead to every row that is found in a page without a fault? Else pages of an older
    // state are among those that it leads to, and having been reached tells nothing of a card's age.
    bool TreeComplete() const { return treeComplete_; }

    // Reads a found card; the bytes end where its chain of pages breaks, and none are there where the medium
    // does not give the card again.
    CardBytes Read(const CardCell &card) const;

private:
    std::vector<CardCell> FindIn(std::uint32_t page) const;
    void CompareWithIndexes(CardCell &card) const;
    void AddRowGaps(std::uint32_t page);
    void LookAtLeaves(std::vector<CardCell> &found);
    // Is its page one that the table needs, as far as that can be told?
    bool IsInUse(const CardCell &card) const;
    bool IsStale(const CardCell &card) const;
    bool IsUncertain(const CardCell &card) const;
    void Take(const std::vector<CardCell> &found);
    void TakeOne(CardCell card, bool sure);
    bool MayVisit(std::uint32_t page, bool sure) const;

    const PageReader &reader_;
    PageTrees trees_;
    IndexEntries indexes_;
    std::vector<CardCell> cards_;
    KeyGaps rowGaps_;
    std::unordered_set<std::int64_t> rowsSeen_;
    std::unordered_set<double> confirmedNumbers_;
    bool indexComplete_ = false, treeComplete_ = true;
    bool indexLacks_ = false; // the index on "FrageNr" lacks cards that the tree leads to
    // By page: how many cards say that a part of them is there, where the longest of these parts ends, and
    // whether one of them is a card that the index knows.
    std::vector<std::uint8_t> claims_;
    std::vector<std::uint32_t> claimedEnds_;
    std::vector<bool> claimedBySure_;
};

} // namespace paukfix
