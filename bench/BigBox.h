// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Clock.h"
#include "Meldungen.h"

#include <QString>
#include <SQLiteCpp/Database.h>

namespace benchmark {
class State;
}

namespace paukfix {

class CardStore;
class KarteiOeffner;

// What the benchmarks measure on.

inline constexpr int CardCount = 32767;

// A text of so many words, the same for the same seed; and a text as a rich-text box stores it.
QString Words(int seed, int words);
QString Rtf(const QString &plain);

// A box of 32,767 cards with texts of usual length, made once.
const QString &BigFile();

// Opens a copy of it in this directory. Ends the program where that fails.
void OpenCopy(CardStore &store, const QString &directory, const Clock &clock);

// Measures the opening of a big box.
void OpenAgainAndAgain(benchmark::State &state, CardStore &store, KarteiOeffner &oeffner,
                       const QString &path = BigFile());

// A card file as the store opens it, without the store.
SQLite::Database OpenFloor(const QString &path = BigFile());

class StillMeldungen final : public Meldungen
{
public:
    void Zeigen(const QString &, Symbol) override {}

    Antwort Fragen(const QString &, Antwort) override { return Antwort::Nein; }

    qsizetype Waehlen(const QString &, const QStringList &, qsizetype abbruch) override { return abbruch; }

    void Bericht(const QString &, const QString &) override {}

    void Sanduhr(bool) override {}
};

// Its second is over at once: what is measured is the opening, not the calibration.
class HastyClock final : public Clock
{
public:
    qint64 Second() const override { return ++readings_; }

    QDateTime Now() const override { return {}; }

private:
    mutable qint64 readings_ = 0;
};

} // namespace paukfix
