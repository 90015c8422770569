// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Clock.h"
#include "FuzzSupport.h"
#include "Meldungen.h"

namespace paukfix {

// The seams of a program without windows.

// Shows nothing and declines everything. Every message must say something.
class StummeMeldungen final : public Meldungen
{
public:
    void Zeigen(const QString &text, Symbol /*symbol*/ = Symbol::Keins) override { Require(!text.isEmpty()); }

    Antwort Fragen(const QString &text, Antwort /*vorgabe*/ = Antwort::Ja) override
    {
        Require(!text.isEmpty());
        return Antwort::Nein;
    }

    qsizetype Waehlen(const QString &text, const QStringList &knoepfe, qsizetype abbruch) override
    {
        Require(!text.isEmpty() && abbruch < knoepfe.size());
        return abbruch;
    }

    void Bericht(const QString & /*titel*/, const QString &text) override { Require(!text.isEmpty()); }

    void Sanduhr(bool /*an*/) override {}
};

// A second passes with every hundredth reading.
class FastClock final : public Clock
{
public:
    qint64 Second() const override { return readings_++ / 100; }

    QDateTime Now() const override { return {}; }

private:
    mutable qint64 readings_ = 0;
};

} // namespace paukfix
