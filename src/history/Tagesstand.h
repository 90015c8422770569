// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachNummern.h"

#include <QDate>

#include <array>
#include <map>
#include <optional>

namespace paukfix {

// Cards in Neu, 1 to 5 and erledigt.
using Kartenzahlen = std::array<int, FachAnzahl>;

// One box on one day of the local calendar: its answers, and its cards when it was last seen that day.
struct Tagesstand
{
    QDate tag;
    int richtig = 0, falsch = 0;
    Kartenzahlen karten{};

    bool Gelernt() const { return richtig + falsch > 0; }

    bool operator==(const Tagesstand &) const = default;
};

// What has happened on a day since it was last written: fewer answers where some were taken back. Without
// cards those that are known of the day stay.
struct Tagesaenderung
{
    int richtig = 0, falsch = 0;
    std::optional<Kartenzahlen> karten;

    bool operator==(const Tagesaenderung &) const = default;
};

using Tagesaenderungen = std::map<QDate, Tagesaenderung>;

// Adds the later changes `dazu` to `zu`.
inline void Zusammenfassen(Tagesaenderungen &zu, const Tagesaenderungen &dazu)
{
    for (const auto &[tag, neu] : dazu) {
        Tagesaenderung &bisher = zu[tag];
        bisher.richtig += neu.richtig;
        bisher.falsch += neu.falsch;
        if (neu.karten)
            bisher.karten = neu.karten;
    }
}

} // namespace paukfix
