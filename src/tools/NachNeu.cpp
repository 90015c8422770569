// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "NachNeu.h"

#include "CardBulk.h"

namespace paukfix {

using namespace Qt::StringLiterals;

Ausgang AlleNachNeu(const Werkbank &bank)
{
    const bool getan = Versuchen(bank.meldungen, [&] {
        CardRecordset &karten = bank.store.Karten();
        const Aenderung schritt(bank.store, u"Alle Karten nach Neu"_s);
        InEinemZug(karten, [&] { MoveAllToNew(karten, bank.progress); });
    });
    NeuOeffnen(bank);
    return getan ? Ausgang::Gelungen : Ausgang::Gescheitert;
}

std::optional<int> ErledigteNachNeu(const Werkbank &bank)
{
    int anzahl = 0;
    const bool getan = Versuchen(bank.meldungen, [&] {
        CardRecordset &karten = bank.store.Karten();
        const int lfdMax = bank.store.FachInfo[FachNeu].LfdMax;
        const Aenderung schritt(bank.store, u"Erledigte Karten nach Neu"_s);
        InEinemZug(karten, [&] { anzahl = MoveDoneToNew(karten, lfdMax, bank.progress); });
    });
    NeuOeffnen(bank);
    return getan ? std::optional(anzahl) : std::nullopt;
}

} // namespace paukfix
