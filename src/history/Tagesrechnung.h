// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tagesstand.h"

#include <vector>

namespace paukfix {

// Arithmetic of days. A day is a date of the local calendar, however many hours it has. All functions take
// days in the order of their dates.

enum class Zeitraum
{
    Tage30,
    Wochen12,
    Alles
};

// Without what only a wrong clock can have left: dates to come, and those before the program was there.
std::vector<Tagesstand> Glaubhaft(const std::vector<Tagesstand> &tage, const QDate &heute);

// The first day of a period that ends today. All that is known is at least a week.
QDate Beginn(Zeitraum zeitraum, const std::vector<Tagesstand> &tage, const QDate &heute);

// Days learned in a row. They end today, or yesterday as long as today may still be learned.
int TageInFolge(const std::vector<Tagesstand> &tage, const QDate &heute);

// One entry for each day from `von` to `bis`. Where a day is not known there were no answers, and the cards
// are those of the day before; nothing where no earlier day is known either.
std::vector<std::optional<Tagesstand>> Lueckenlos(const std::vector<Tagesstand> &tage, const QDate &von,
                                                  const QDate &bis);

} // namespace paukfix
