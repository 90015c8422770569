// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tagesstand.h"

#include <vector>

namespace paukfix {

// Turns the tally of one session into answers a day. The tally is read again and again; what it has grown by
// belongs to the day of the reading, what it has sunk by (answers were taken back) is taken from the latest
// days of the session that have some.
class Mitschrift
{
public:
    // What the session has counted so far, and the cards as they are now.
    void Sehen(const QDate &heute, int richtig, int falsch, const Kartenzahlen &karten);
    // What has changed since it was last fetched.
    Tagesaenderungen Abholen();

private:
    struct Beitrag
    {
        QDate tag;
        int anzahl = 0;
    };

    using Zaehler = int Tagesaenderung::*;

    void Zaehlen(std::vector<Beitrag> &bisher, const QDate &heute, int anzahl, Zaehler zaehler);

    std::vector<Beitrag> richtig_, falsch_; // in the order in which they were read; none is 0
    std::optional<std::pair<QDate, Kartenzahlen>> zuletzt_;
    Tagesaenderungen neu_;
};

} // namespace paukfix
