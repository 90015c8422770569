// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardKeys.h"
#include "JetTable.h"

#include <array>
#include <vector>

namespace paukfix {

// The cards of a card file of the former database engine.
class JetCards
{
public:
    // Throws StoreError as JetFile does; 3078 where the database has no table "Lernkarten", 3265 where that
    // lacks a field that the program needs, 13 where a field has another type, 3049 where the definitions are
    // damaged.
    explicit JetCards(const QString &path);

    const JetFile &File() const { return file_; }

    // The cards under the keys that they get in a card file of today, in order of FrageNr.
    const std::vector<CardPlan> &Cards() const { return plans_; }

    // The values of a card as they are stored, with remarks on what of them cannot be read. Each card is
    // meant to be read once.
    SalvagedCard Read(const CardPlan &plan);

    // Cards that the file counts and that are not among Cards().
    std::uint32_t Lost() const { return lost_; }

private:
    void BindColumns();
    void FindCards();

    JetFile file_;
    JetTable table_;
    std::array<const JetColumn *, CardColumnCount> columns_{}; // null where the table lacks one
    std::vector<JetPlace> places_;                             // of the cards, as they were found
    std::vector<CardPlan> plans_;
    std::uint32_t lost_ = 0;
};

} // namespace paukfix
