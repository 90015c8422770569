// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SalvagedCard.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace paukfix {

// A card that a reader has found, and what is known of it.
struct FoundCard
{
    static constexpr double None = std::numeric_limits<double>::quiet_NaN();

    std::int64_t rowid = 0;
    double number = None, compartment = None, place = None; // FrageNr, FachNr, FachLfdNr; None for null
    std::size_t source = 0; // the reader's own count, by which it finds the card again
    bool reached = false;   // the table's tree leads to it
    bool confirmed = false; // the index on FrageNr knows this number and row
    bool placed = false;    // the index "BoxKey" knows this place and row
    bool whole = false;     // all parts of the record are there
    bool uncertain = false; // nothing tells whether it was deleted
    bool disputed = false;  // nothing tells whether another state of it that is there is the newer one
};

// A card that goes into a new card file, with the keys that it gets there.
struct CardPlan
{
    FoundCard card;
    int number = 0;
    int compartment = 0;
    int place = 0;
    std::vector<Remark> remarks; // on its keys
};

// What is known of cards beside their own keys. This one knows nothing.
class CardWitness
{
public:
    struct Place
    {
        int compartment = 0;
        int place = 0;
    };

    CardWitness() = default;
    CardWitness(const CardWitness &) = delete;
    CardWitness &operator=(const CardWitness &) = delete;
    virtual ~CardWitness() = default;

    // The number and the place that an index names for the card's row.
    virtual std::optional<int> NumberOf(const FoundCard & /*card*/) const { return std::nullopt; }

    virtual std::optional<Place> PlaceOf(const FoundCard & /*card*/) const { return std::nullopt; }

    // Brings cards that bear one number into the order of their rows, the best copy of each row first.
    virtual void SortCopies(std::vector<CardPlan> & /*plans*/) const {}

    virtual bool SameContent(const CardPlan & /*one*/, const CardPlan & /*other*/) const { return false; }
};

// Gives every card keys that a card file can hold, its own ones where they are usable. In order of FrageNr;
// cards for which no number is left are not among the result.
//
// Two different cards with one FrageNr come from a damaged number: the one that the index knows keeps it,
// else the newer one; the other gets the number that the index knows for its row, else a new one. Two cards
// on one place of a compartment: the one that the index knows there stays, else the one with the lower
// number; the other goes to the compartment's back.
std::vector<CardPlan> GiveKeys(std::vector<CardPlan> candidates, const CardWitness &witness);

// Gives the card the keys of its plan, with the remarks on them.
void ApplyKeys(SalvagedCard &card, const CardPlan &plan);
// The value as a compartment, 0 to 6; nothing for anything else.
std::optional<int> WholeCompartment(double value);

} // namespace paukfix
