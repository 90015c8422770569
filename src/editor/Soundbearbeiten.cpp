// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Soundbearbeiten.h"

#include "StoreError.h"

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

Soundbearbeiten::Soundbearbeiten(SlotUmgebung umgebung, std::function<void(const QString &pfad)> klang,
                                 const QString &frageNr, QWidget *parent)
    : Slotdialog(std::move(umgebung), Texte(), frageNr, parent), klang_(std::move(klang))
{
}

// What the player makes of a file that is no sound, it says itself.
void Soundbearbeiten::Vorschau(const QString &pfad)
{
    if (!QFileInfo(pfad).isFile())
        throw StoreError(Fehler::DateiNichtGefunden, QStringLiteral("Datei nicht gefunden: „%1“").arg(pfad));
    klang_(pfad);
}

void Soundbearbeiten::Annehmen(const QString &) {}

void Soundbearbeiten::Angenommen(const QString &pfad)
{
    Vorschau(pfad);
}
