// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

#include <QLocale>

namespace paukfix {

// What the statistics window shows: the session as it is at one moment.
struct StatistikWerte
{
    struct Zeile
    {
        int beginn = 0, jetzt = 0; // cards
    };

    QString DatZeit, Beginn;
    std::array<Zeile, FachAnzahl> Fach{};
    int richtig = 0, falsch = 0, gesamt = 0; // answers
};

// Dates in the short form of `sprache`, times with seconds.
StatistikWerte StatistikLesen(const CardStore &kartei, const QDateTime &jetzt,
                              const QLocale &sprache = QLocale::system());

// A gain as "+3", a loss as "-3", no change as "0".
QString AenderungsText(int aenderung);

} // namespace paukfix
