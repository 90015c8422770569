// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenabdruck.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace paukfix {

// A box that the history knows.
struct BekannteBox
{
    std::int64_t nummer = 0;
    QString pfad;     // where its file was seen last
    bool dort = true; // false: another box has taken that place since
    Kartenabdruck abdruck;
};

// Which of the known boxes an opened one is: certainly one, perhaps one (its learner is to be asked), or
// none.
struct Wiedererkennung
{
    std::optional<std::int64_t> sicher, vielleicht;
};

// A box is known by its place as long as half of its cards are still there, and elsewhere by its cards where
// no file is left at the old place. `liegtNoch` tells whether there is a file.
Wiedererkennung Wiedererkennen(const std::vector<BekannteBox> &bekannte, const QString &pfad,
                               const Kartenabdruck &abdruck,
                               const std::function<bool(const QString &pfad)> &liegtNoch);

} // namespace paukfix
