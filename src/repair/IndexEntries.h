// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KeyGaps.h"
#include "PageTrees.h"
#include "Progress.h"

#include <array>
#include <limits>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace paukfix {

// What the pages of the indexes "FrageNr" and "BoxKey" of a damaged file still know of the cards, also those
// that no tree leads to any more. Pages of an older state may be among them, so that the pages can contradict
// each other; an index that knows few cards proves nothing about the others.
class IndexEntries
{
public:
    // Throws what `progress` throws.
    IndexEntries(const PageReader &reader, const PageTrees &trees, const Progress &progress = {});

    // By the card's row: its FrageNr.
    const std::unordered_map<std::int64_t, double> &Numbers() const { return numbers_; }

    // Do two neighbours on one page show that no card has this number?
    bool DeniesNumber(double number) const { return gaps_.Contains(number); }

    // Does the index's own tree lead to this number?
    bool TreeKnows(double number) const { return inTree_.contains(number); }

    // Should the index on "FrageNr" know this number? It is whole and knows higher ones, and no page of it
    // lies about that its tree does not lead to.
    bool Covers(double number) const { return covers_ && number < highest_; }

    struct Place
    {
        double compartment = 0;
        double place = 0;

        bool operator==(const Place &) const = default;
    };

    // Does the index "BoxKey" know the card's row on this place?
    bool KnowsPlace(std::int64_t row, Place place) const;
    // The first of the places that it knows for the row; those that the tree leads to come first.
    std::optional<Place> PlaceOf(std::int64_t row) const;

private:
    // Entries of several states may stand side by side; more of them tell no more.
    static constexpr std::size_t MostPlaces = 3;

    struct Places
    {
        std::array<Place, MostPlaces> known;
        std::size_t count = 0;
    };

    void ReadPage(const BTreePage &page, bool whole, bool reached);

    std::unordered_map<std::int64_t, double> numbers_;
    std::unordered_set<double> inTree_;
    std::unordered_map<std::int64_t, Places> places_;
    KeyGaps gaps_;
    bool covers_ = false;
    double highest_ = -std::numeric_limits<double>::infinity();
};

} // namespace paukfix
