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
                 const Oeffnungsmelder &melder = {});

// Replaces KarteiPfad/fileName by a new, empty card file, which is not opened. Throws StoreError where it
// cannot be made; what is open stays open then, but where it was to be replaced itself and its place could
// not be taken.
void KarteiAnlegen(CardStore &kartei, const QString &fileName);

} // namespace paukfix
