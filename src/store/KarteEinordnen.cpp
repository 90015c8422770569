// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteEinordnen.h"

#include "CardBulk.h"
#include "CardTransaction.h"

#include <algorithm>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

void FachSetzen(CardStore &kartei, int fach, int lfdNr)
{
    kartei.Karten().Edit();
    kartei.Felder().FachNr.Set(fach);
    kartei.Felder().FachLfdNr.Set(lfdNr);
    kartei.Karten().Update();
}

// The running numbers of `ziel` are used up: they are closed up, and the current card goes to the back.
void Aufruecken(CardStore &kartei, int ziel, Faecher &danach)
{
    CardRecordset &karten = kartei.Karten();
    const double frageNr = kartei.Felder().FrageNr.Number();
    CardTransaction zug(karten);
    karten.Past([&](SQLite::Database &database) {
        danach.Aufgerueckt(ziel, CloseUpCompartment(database, ziel, frageNr) - 1);
        danach.Anhaengen(ziel);
    });
    zug.Commit();
}

} // namespace

int KarteEinordnen(CardStore &kartei, bool richtig)
{
    const int alt = kartei.Felder().FachNr.Integer();
    const int neu = ZielFach(alt, richtig);
    const Aenderung schritt(kartei, u"Antwort auf Frage %1"_s.arg(kartei.Felder().FrageNr.Number()));

    // First the file, then the counts: what could not be stored is not counted.
    Faecher danach = kartei.FachInfo;
    danach.Entnehmen(alt);
    if (danach.Verbraucht(neu))
        Aufruecken(kartei, neu, danach);
    else
        FachSetzen(kartei, neu, danach.Anhaengen(neu));
    kartei.FachInfo = danach;
    kartei.sitzung.Zaehlen(richtig);
    return neu;
}

void NeuZaehlen(CardStore &kartei, int fehler) noexcept
{
    try {
        // A file that was taken away, or that another program has taken over, can still be read, but keeps
        // nothing.
        if (fehler == Fehler::KarteiNichtGefunden || fehler == Fehler::Gesperrt)
            throw StoreError(fehler, {});
        kartei.FachInfo.Zaehlen(kartei.Karten());
    } catch (const std::exception &) {
        kartei.CloseCardFile();
        kartei.FehlerStatus =
            static_cast<qint16>(std::clamp<int>(fehler, 1, std::numeric_limits<qint16>::max()));
    }
}

} // namespace paukfix
