// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteEinordnen.h"

#include "CardBulk.h"
#include "CardTransaction.h"

#include <QScopeGuard>

#include <algorithm>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

void FachSetzen(CardStore &kartei, int fach, int lfdNr)
{
    // What could not be written must not be read afterwards: where the card lies is asked of the file then.
    const auto verworfen = qScopeGuard([&] { kartei.Karten().CancelUpdate(); });
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

bool StehtAuf(CardStore &kartei, double frageNr)
{
    try {
        return kartei.Felder().FrageNr.Number() == frageNr;
    } catch (const StoreError &) { // on no card, or on one that cannot be read: it is looked for
        return false;
    }
}

// Stands on the card, wherever the cursor is. Throws StoreError where it is another one by now.
void Aufsuchen(CardStore &kartei, const GefragteKarte &karte)
{
    if (StehtAuf(kartei, karte.frageNr))
        return;
    CardRecordset &karten = kartei.Karten();
    karten.SetIndex(u"FrageNr");
    const auto wieVorher = qScopeGuard([&karten] { karten.SetIndex(u"BoxKey"); });
    karten.Seek(CardRecordset::Comparison::Equal, karte.frageNr);
    if (karten.NoMatch() || kartei.Felder().Frage.Text() != karte.frage)
        throw StoreError(Fehler::KeinDatensatz,
                         u"Die Karte Nr. %1 ist nicht mehr in der Kartei."_s.arg(karte.frageNr));
}

bool LiegtIn(const CardFieldHandles &felder, int fach, int lfdNr)
{
    return felder.FachNr.Integer() == fach && felder.FachLfdNr.Integer() == lfdNr;
}

// Was the card moved to the back of `ziel` by an attempt that failed? The box is counted then.
bool SchonDort(CardStore &kartei, const GefragteKarte &karte, int ziel)
{
    Faecher gezaehlt;
    gezaehlt.Zaehlen(kartei.Karten());
    kartei.FachInfo = gezaehlt;
    Aufsuchen(kartei, karte);
    return LiegtIn(kartei.Felder(), ziel, gezaehlt.at(static_cast<std::size_t>(ziel)).LfdMax);
}

// Where the disk failed when all was written.
bool TrotzdemGespeichert(CardStore &kartei, const GefragteKarte &karte, int ziel) noexcept
{
    try {
        Aufsuchen(kartei, karte);
        return !LiegtIn(kartei.Felder(), karte.fach, karte.lfdNr) && SchonDort(kartei, karte, ziel);
    } catch (const std::exception &) { // not to be found out
        return false;
    }
}

} // namespace

GefragteKarte Gefragt(CardStore &kartei)
{
    const CardFieldHandles &felder = kartei.Felder();
    return {felder.FrageNr.Number(), felder.FachNr.Integer(), felder.FachLfdNr.Integer(),
            felder.Frage.Text()};
}

int KarteEinordnen(CardStore &kartei, const GefragteKarte &karte, bool richtig)
{
    const int neu = ZielFach(karte.fach, richtig);
    const Aenderung schritt(kartei, u"Antwort auf Frage %1"_s.arg(karte.frageNr));
    Aufsuchen(kartei, karte);
    const bool liegtNoch = LiegtIn(kartei.Felder(), karte.fach, karte.lfdNr);
    if (!liegtNoch && !SchonDort(kartei, karte, neu))
        throw StoreError(Fehler::KeinDatensatz,
                         u"Die Karte Nr. %1 liegt inzwischen in einem anderen Fach."_s.arg(karte.frageNr));
    if (liegtNoch) {
        // First the file, then the counts: what could not be stored is not counted.
        Faecher danach = kartei.FachInfo;
        danach.Entnehmen(karte.fach);
        try {
            if (danach.Verbraucht(neu))
                Aufruecken(kartei, neu, danach);
            else
                FachSetzen(kartei, neu, danach.Anhaengen(neu));
        } catch (const StoreError &) {
            if (!TrotzdemGespeichert(kartei, karte, neu))
                throw;
            danach = kartei.FachInfo;
        }
        kartei.FachInfo = danach;
    }
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
