// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Soundbearbeiten.h"

#include "StoreError.h"
#include "WaveFile.h"

#include <QFileInfo>

namespace {

SlotTexte Texte()
{
    return {QStringLiteral("Soundbearbeiten"),
            QStringLiteral("Sound bearbeiten"),
            QStringLiteral("Sound abspielen bei:"),
            QStringLiteral("Sounddatei öffnen"),
            QStringLiteral("Audiodateien (*.wav)|*.wav"),
            QStringLiteral("Bitte nur Dateien aus dem gleichen Verzeichnis wie die Merkkasten"),
            QStringLiteral("Fehler beim Soundöffnen: "),
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
        throw StoreError(Fehler::DateiNichtGefunden, QStringLiteral("Datei nicht gefunden: „%1“").arg(pfad));
    if (!IsWave(pfad.toStdString()))
        throw StoreError(Fehler::UngueltigerKlang, QStringLiteral("Keine WAV-Datei: „%1“").arg(pfad));
}

void Soundbearbeiten::Angenommen(const QString &pfad)
{
    Dienst().ton.Spielen(pfad);
}
