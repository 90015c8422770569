// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzung.h"

#include <algorithm>
#include <limits>

namespace paukfix {

void Sitzung::StartSessionTally(const QDateTime &jetzt, const FachTabelle &faecher)
{
    Leeren();
    beginn_ = jetzt;
    std::transform(faecher.begin(), faecher.end(), begAnz_.begin(),
                   [](const Fach &fach) { return fach.Anzahl; });
}

void Sitzung::Leeren() noexcept
{
    *this = {};
}

void Sitzung::Zaehlen(bool richtig) noexcept
{
    qint16 &zaehler = richtig ? richtig_ : falsch_;
    if (zaehler < std::numeric_limits<qint16>::max())
        ++zaehler;
}

} // namespace paukfix
