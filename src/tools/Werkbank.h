// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "KarteiOeffner.h"
#include "Progress.h"
#include "Step.h"

#include <QString>

#include <functional>
#include <vector>

namespace paukfix {

// What the work of every tool stands on. The work needs no window: it reports through `meldungen`.
struct Werkbank
{
    CardStore &store;
    KarteiOeffner &oeffner;
    Meldungen &meldungen;
    // Throws StoreError 3059 where the learner wants the end of the work.
    Progress progress = {};
    // From now on the work can no longer be ended.
    std::function<void()> unwiderruflich = [] {};
};

// Gelungen: all was done, the success may be told. Teilweise: something was done, and what could not be was
// reported. Gescheitert: nothing was done, or nobody knows; what happened was reported.
enum class Ausgang
{
    Gelungen,
    Teilweise,
    Gescheitert
};

// Stands before the text of every error of a tool.
QString FehlerKontext();

// The one error report of the tools for errors that were collected.
// That work was cancelled is no error: it is told without the words that begin one.
void FehlerMelden(Meldungen &meldungen, const std::vector<StoreError> &fehler);
// Runs `tun` and reports what it throws. Tells whether it threw nothing.
bool Versuchen(Meldungen &meldungen, const std::function<void()> &tun);

// "1 Karte", "2 Karten".
QString KartenText(int anzahl);
// "1 Karte kommt", "2 Karten kommen".
QString Kommen(int anzahl);

// Runs `arbeit` as one transaction over the open cards: all of it is kept or nothing. Where it or the commit
// throws, the StoreError thrown says which, as the file shows it; it should be opened again then.
void InEinemZug(CardRecordset &karten, const std::function<void()> &arbeit);

// Opens the card file `name` in KarteiPfad and tells that this takes a while. A failure empties `name`.
void Oeffnen(const Werkbank &bank, QString &name, Vertrauen vertrauen = Vertrauen::Keines);
// Opens the open card file again, which rebuilds FachInfo and keeps the history. Nothing happens where there
// has never been one.
void NeuOeffnen(const Werkbank &bank);

// A file name as it was chosen or typed, in full; a name without directory lies beside the open card file.
// Throws StoreError 53 for an empty name.
QString VollerPfad(const CardStore &store, const QString &dateiname);

// Throws StoreError 3051 where `pfad` leads to the open card file: it is neither read nor written past the
// engine.
void NichtDieOffene(const CardStore &store, const QString &pfad);

// The full path of a file that a tool is to make under the name `dateiname`. Throws StoreError 53 for an
// empty name, 3051 for the open card file and for what may not be written, 3045 for a card file that another
// program has open.
QString ZielPfad(const CardStore &store, const QString &dateiname);

} // namespace paukfix
