// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Clock.h"
#include "Progress.h"

#include <functional>
#include <optional>

namespace paukfix {

// What became of the opening of a card file. Unless it is open, `fehler` says why not.
struct Oeffnung
{
    enum class Ausgang
    {
        Offen,
        AltesFormat, // of the former database engine and sound: ConvertJetFile can convert it
        Beschaedigt, // RepairDatabase may mend it
        Gescheitert
    };

    Ausgang ausgang = Ausgang::Gescheitert;
    std::optional<StoreError> fehler;
    bool ohnePruefsummen = false; // open, and GivePageSums can give its pages their sums
    bool unfertig = false;        // a copy is open without what another program has not finished
};

// Whether a card file is checked whole before it is used. What this program has written and synced a moment
// ago stands in the system's cache as it was written: a check would find nothing of the disk's, and the
// backup of the day, which is made next, is checked as a whole.
enum class Vertrauen
{
    Keines,
    EbenGeschrieben
};

// What is told while a file is opened.
struct Oeffnungsmelder
{
    // Makes what is told how far the check of the file has come, for as long as the check takes. What that
    // throws ends the opening.
    std::function<Progress()> pruefung = [] { return Progress(); };
    // After every eleventh card that was counted.
    std::function<void()> gezaehlt = [] {};
};

// Closes what is open, opens KarteiPfad/fileName, checks it, counts its cards and begins a session. Where it
// cannot be opened whole, nothing is open. The cursor stands at the end.
Oeffnung Oeffnen(CardStore &kartei, const QString &fileName, const Clock &clock,
                 const Oeffnungsmelder &melder = {}, Vertrauen vertrauen = Vertrauen::Keines);

// Whether a card file that could not be opened, with `fehler`, can be opened to be looked at all the same: it
// may be read but not written, or another program has it.
bool IstAnsehbar(const CardStore &kartei, const QString &fileName, const StoreError &fehler);

// The same as Oeffnen, but for a copy of the file as it is now (CardSnapshot), one of the former database
// engine converted: it can be looked at, and nothing in it changed. A change that another program has not
// finished is taken back in the copy. No file that can be repaired is told of.
Oeffnung ZumAnsehenOeffnen(CardStore &kartei, const QString &fileName, const Clock &clock,
                           const Oeffnungsmelder &melder = {});

// Replaces KarteiPfad/fileName by a new, empty card file, which is not opened. Throws StoreError where it
// cannot be made; what is open stays open then, but where it was to be replaced itself and its place could
// not be taken.
void KarteiAnlegen(CardStore &kartei, const QString &fileName);

} // namespace paukfix
