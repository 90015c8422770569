// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Packauftrag.h"

#include "CardFile.h"
#include "Medienzug.h"
#include "Packen.h"

namespace paukfix {

using namespace Qt::StringLiterals;

Ausgang KarteiPacken(const Werkbank &bank, const QString &ziel)
{
    CardStore &store = bank.store;
    Packliste liste;
    const bool gepackt = Versuchen(bank.meldungen, [&] {
        const QString pfad = ZielPfad(store, ziel);
        // Another file may stand where the open one stood: what is packed must be what is shown.
        if (!store.NurAnsehen())
            InEinemZug(store.Karten(), [] {});
        const Progress warten = bank.oeffner.WartenZeigen(
            u"Die Kartei wird gepackt."_s, u"Das Packen wurde abgebrochen; es wurde nichts geschrieben."_s);
        const QString kartei = store.CardPath(store.CurrentFileName);
        liste = PacklisteVon(kartei, MediaNames(store.Karten()), warten);
        Packen(store.Datei().ReadablePath(), liste, pfad, warten);
    });
    if (!gepackt)
        return Ausgang::Gescheitert;
    MedienBerichten(bank.meldungen, liste.bericht);
    return Ausgang::Gelungen;
}

} // namespace paukfix
