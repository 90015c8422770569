// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteVerschieben.h"

#include "BoxRechnung.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint16 Hoechste16 = std::numeric_limits<qint16>::max();

void Hochzaehlen(qint16 &zaehler)
{
    if (zaehler < Hoechste16)
        ++zaehler;
}

void FachSetzen(CardStore &kartei, int fach, int lfdNr)
{
    kartei.Karten().Edit();
    kartei.Felder().FachNr.Set(fach);
    kartei.Felder().FachLfdNr.Set(lfdNr);
    kartei.Karten().Update();
}

// The running numbers of `ziel` are used up: they are closed up, order kept, and the current card goes to the
// back. Returns the card's new running number.
qint16 Aufruecken(CardStore &kartei, int ziel)
{
    CardRecordset &karten = kartei.Karten();
    CardFieldHandles &felder = kartei.Felder();
    const double frageNr = felder.FrageNr.Number();

    karten.BeginTrans();
    try {
        // The card itself steps in front of all others, out of their way.
        int vorn = 1;
        if (ErsteKarte(karten, ziel))
            vorn = std::min<int>(vorn, felder.FachLfdNr.Integer());
        karten.SetIndex(u"FrageNr");
        karten.Seek(CardRecordset::Comparison::Equal, frageNr);
        FachSetzen(kartei, ziel, vorn - 1);

        // Numbers only get lower on the way, so none meets one that is still taken.
        karten.SetIndex(u"BoxKey");
        int lfdNr = vorn;
        for (karten.MoveNext(); !karten.AtEOF() && felder.FachNr.Number() == ziel; karten.MoveNext())
            FachSetzen(kartei, ziel, lfdNr++);

        karten.SetIndex(u"FrageNr");
        karten.Seek(CardRecordset::Comparison::Equal, frageNr);
        FachSetzen(kartei, ziel, lfdNr);
        karten.SetIndex(u"BoxKey");
        karten.CommitTrans();
        return Plus16(0, lfdNr);
    } catch (...) {
        if (karten.InTransaction())
            karten.Rollback();
        throw;
    }
}

} // namespace

void KarteVerschieben(CardStore &kartei, Meldungen &meldungen, qint16 ergebnis)
{
    // Stored before the message, which stays as long as its reader likes.
    if (KarteEinordnen(kartei, ergebnis) == FachErledigt) {
        meldungen.Zeigen(
            QStringLiteral("Sehr gut!\nDiese Frage beherrschen Sie.\nDie Frage ist vorerst erledigt"),
            Meldungen::Symbol::Ausruf);
    }
}

int KarteEinordnen(CardStore &kartei, qint16 ergebnis)
{
    const bool richtig = ergebnis == ErgebnisRichtig;
    const int alt = kartei.Felder().FachNr.Integer();
    const int neu = ZielFach(alt, richtig);

    // First the file, then the counts: what could not be stored is not counted.
    FachTabelle tabelle = kartei.FachInfo;
    Fach &von = tabelle.at(static_cast<std::size_t>(alt));
    Fach &nach = tabelle[static_cast<std::size_t>(neu)];
    von.Anzahl = Plus16(von.Anzahl, -1);
    nach.Anzahl = Plus16(nach.Anzahl, 1);
    if (nach.LfdMax < Hoechste16) {
        ++nach.LfdMax;
        FachSetzen(kartei, neu, nach.LfdMax);
    } else {
        nach.LfdMax = Aufruecken(kartei, neu);
    }
    kartei.FachInfo = tabelle;
    Hochzaehlen(richtig ? kartei.RichtigZaehler : kartei.FalschZaehler);
    return neu;
}

void NeuZaehlen(CardStore &kartei, int fehler) noexcept
{
    for (Fach &fach : kartei.FachInfo)
        fach.Anzahl = fach.LfdMax = 0;
    try {
        // A file that was taken away, or that another program has taken over, can still be read, but keeps
        // nothing.
        if (fehler == Fehler::KarteiNichtGefunden || fehler == Fehler::Gesperrt)
            throw StoreError(fehler, {});
        CardRecordset &karten = kartei.Karten();
        karten.SetIndex(u"BoxKey");
        for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
            Fach &fach = kartei.FachInfo.at(static_cast<std::size_t>(kartei.Felder().FachNr.Integer()));
            fach.Anzahl = Plus16(fach.Anzahl, 1);
            fach.LfdMax = kartei.Felder().FachLfdNr.Integer();
        }
    } catch (const std::exception &) {
        kartei.CloseCardFile();
        kartei.ClearSessionTally();
        for (Fach &fach : kartei.FachInfo)
            fach.Anzahl = fach.LfdMax = 0;
        kartei.FehlerStatus = static_cast<qint16>(std::clamp(fehler, 1, int(Hoechste16)));
    }
}
