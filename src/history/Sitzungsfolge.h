// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Mitschrift.h"

#include <QDateTime>

#include <vector>

namespace paukfix {

// The sessions of one box, one behind the other: a tool may open the file again, and what is taken back or
// done again then may belong to a session before. In a session, those before it count what they had when the
// next one began, and those behind it count nothing.
class Sitzungsfolge
{
public:
    // What the session that began at `beginn` has counted, and the cards as they are now. One that was not
    // seen before follows the one that was seen last.
    void Sehen(const QDateTime &beginn, const QDate &heute, int richtig, int falsch,
               const Kartenzahlen &karten);
    // What has changed since it was last fetched.
    Tagesaenderungen Abholen();

private:
    struct Glied
    {
        QDateTime beginn;
        Mitschrift mitschrift;
        int richtig = 0, falsch = 0; // when the next one began
    };

    std::vector<Glied> glieder_;
    std::size_t jetzt_ = 0;
    int richtig_ = 0, falsch_ = 0; // seen last
};

} // namespace paukfix
