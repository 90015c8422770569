// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenablage.h"

#include "KarteLoeschen.h"

#include <QScopeGuard>

#include <limits>
#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

qint16 NaechsteNummer(CardStore &kartei)
{
    if (kartei.HighestCardNumber == std::numeric_limits<qint16>::max())
        throw StoreError(Fehler::Ueberlauf,
                         u"Überlauf: Die Kartennummern sind aufgebraucht, %1 ist vergeben."_s.arg(
                             kartei.HighestCardNumber));
    return ++kartei.HighestCardNumber;
}

} // namespace

Ablage KarteAnlegen(CardStore &kartei, Kartenblatt blatt, Kopiervorlage vorlage)
{
    const Aenderung schritt(kartei, u"Neue Karte %1"_s.arg(kartei.HighestCardNumber + 1));
    Ablage ablage;
    Faecher danach = kartei.FachInfo;
    bool versucht = false;
    try {
        CardRecordset &karten = kartei.Karten();
        CardFieldHandles &felder = kartei.Felder();
        const auto verwerfen = qScopeGuard([&] { karten.CancelUpdate(); });
        Rohtexte texte;
        if (vorlage == Kopiervorlage::AktuelleKarte) {
            texte = RohtexteLesen(felder);
        } else {
            // The record has nothing yet that could be left as it is.
            blatt.Frage_bearbeitet = true;
            blatt.Antwort_bearbeitet.fill(true);
        }
        karten.AddNew();
        ablage.nummer = NaechsteNummer(kartei);
        felder.FachNr.Set(FachNeu);
        felder.FachLfdNr.Set(danach.Anhaengen(FachNeu));
        felder.FrageNr.Set(ablage.nummer);
        WriteFields(blatt, felder);
        RohtexteSchreiben(texte, blatt, felder);
        versucht = true;
        karten.Update();
    } catch (const std::exception &) {
        ablage.fehler = std::current_exception();
    }
    std::optional<bool> steht = !ablage.fehler;
    if (ablage.fehler && versucht)
        steht = StehtInDerKartei(kartei.Karten(), ablage.nummer);
    if (!steht)
        danach.Entnehmen(FachNeu); // its running number may be taken
    if (steht != false)
        kartei.FachInfo = danach;
    if (steht == true)
        ablage.fehler = nullptr;
    return ablage;
}

void KarteUeberschreiben(CardStore &kartei, const Kartenblatt &blatt)
{
    CardRecordset &karten = kartei.Karten();
    const Aenderung schritt(kartei, u"Änderung an Karte %1"_s.arg(kartei.Felder().FrageNr.Number()));
    const auto verwerfen = qScopeGuard([&] { karten.CancelUpdate(); });
    karten.Edit();
    WriteFields(blatt, kartei.Felder());
    karten.Update();
}

} // namespace paukfix
