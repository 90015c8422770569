// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Soundbearbeiten.h"

#include "Klangpruefung.h"
#include "Slotkarte.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

SlotTexte Texte()
{
    return {Medienart::Ton,
            u"Soundbearbeiten"_s,
            u"Sound bearbeiten"_s,
            u"Sound abspielen bei:"_s,
            u"Sounddatei öffnen"_s,
            u"Audiodateien (*.wav)|*.wav"_s,
            {},
            u"Bitte nur Dateien aus dem gleichen Verzeichnis wie die Merkkasten"_s,
            u"Fehler beim Soundöffnen: "_s,
            ErsterTonplatz};
}

} // namespace

Soundbearbeiten::Soundbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                                 QWidget *parent)
    : Slotdialog(kartei, dienste, std::move(dateien), Texte(), parent)
{
    Aufbauen();
}

void Soundbearbeiten::Vorschau(const QString &pfad)
{
    Annehmen(pfad);
    Dienst().ton.Spielen(pfad);
}

void Soundbearbeiten::Belegen(Slotkarte &karte, const QString &pfad)
{
    if (pfad.isEmpty())
        karte.DauerZeigen(std::nullopt);
    else
        karte.DauerZeigen(Klanglaenge(pfad));
}

void Soundbearbeiten::Annehmen(const QString &pfad)
{
    KlangPruefen(pfad);
}

void Soundbearbeiten::Angenommen(const QString &pfad)
{
    Dienst().ton.Spielen(pfad);
}

} // namespace paukfix
