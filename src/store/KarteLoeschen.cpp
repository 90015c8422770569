// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteLoeschen.h"

#include <algorithm>
#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

bool IstLetzteKarte(const Faecher &faecher, Erledigte erledigte)
{
    const auto ende = erledigte == Erledigte::Zaehlen ? faecher.end() : faecher.begin() + FachErledigt;
    return std::accumulate(faecher.begin(), ende, 0,
                           [](int summe, const Fach &fach) { return summe + fach.Anzahl; }) == 1;
}

Loeschung KarteLoeschen(CardStore &kartei)
{
    CardRecordset &karten = kartei.Karten();
    const double frageNr = kartei.Felder().FrageNr.Number();
    const Aenderung schritt(kartei, u"Löschen der Karte %1"_s.arg(frageNr));
    Faecher danach = kartei.FachInfo;
    danach.Entnehmen(kartei.Felder().FachNr.Integer());
    Loeschung loeschung;
    try {
        karten.Delete();
        loeschung.geloescht = true;
    } catch (const StoreError &fehler) {
        loeschung.fehler = fehler;
        loeschung.geloescht = StehtInDerKartei(karten, frageNr) == false;
    }
    if (loeschung.geloescht)
        kartei.FachInfo = danach;
    return loeschung;
}

std::optional<bool> StehtInDerKartei(CardRecordset &karten, double frageNr)
{
    const QString vorher = karten.Index();
    std::optional<bool> steht;
    try {
        karten.SetIndex(u"FrageNr");
        karten.Seek(CardRecordset::Comparison::Equal, frageNr);
        steht = !karten.NoMatch();
    } catch (const StoreError &) { // not to be found out
    }
    try {
        karten.SetIndex(vorher);
    } catch (const StoreError &) { // the next move says what is wrong
    }
    return steht;
}

} // namespace paukfix
