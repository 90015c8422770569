// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSource.h"
#include "Kartenabgleich.h"

#include <QString>

#include <vector>

namespace paukfix {

// Where among the values of a copied card those are that tell whether it is another one's like.
class ContentPlaces
{
public:
    // Value i is that of column `columns[i]`; they must outlive it.
    explicit ContentPlaces(const std::vector<int> &columns);

    // Lasts as long as the values.
    Karteninhalt Of(const std::vector<CopiedValue> &values) const;

private:
    std::size_t At(const QString &name) const;

    const std::vector<int> &columns_;
    std::size_t typ_, question_, formattedQuestion_, picture_, sound_;
    std::vector<std::size_t> plain_, formatted_, ticks_; // of the five answers
};

} // namespace paukfix
