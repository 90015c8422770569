// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Soundbearbeiten.h"

#include "StoreError.h"
#include "WaveFile.h"

#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

SlotTexte Texte()
{
    return {u"Soundbearbeiten"_s,
            u"Sound bearbeiten"_s,
            u"Sound abspielen bei:"_s,
            u"Sounddatei öffnen"_s,
            u"Audiodateien (*.wav)|*.wav"_s,
            u"Bitte nur Dateien aus dem gleichen Verzeichnis wie die Merkkasten"_s,
            u"Fehler beim Soundöffnen: "_s,
            6};
}

} // namespace

Soundbearbeiten::Soundbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                                 QWidget *parent)
    : Slotdialog(kartei, dienste, std::move(dateien), Texte(), parent)
{
}

void Soundbearbeiten::Vorschau(const QString &pfad)
{
    Annehmen(pfad);
    Dienst().ton.Spielen(pfad);
}

// What the player itself says of a file comes too late for the slot.
void Soundbearbeiten::Annehmen(const QString &pfad)
{
    if (!QFileInfo(pfad).isFile())
        throw StoreError(Fehler::DateiNichtGefunden, u"Datei nicht gefunden: „%1“"_s.arg(pfad));
    if (!IsWave(pfad.toStdString()))
        throw StoreError(Fehler::UngueltigerKlang, u"Keine WAV-Datei: „%1“"_s.arg(pfad));
}

void Soundbearbeiten::Angenommen(const QString &pfad)
{
    Dienst().ton.Spielen(pfad);
}

} // namespace paukfix
