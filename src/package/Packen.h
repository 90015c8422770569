// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardMedia.h"
#include "Progress.h"

#include <QList>
#include <QString>

namespace paukfix {

// Behind the name of a package: one file, a zip, of a card file and the pictures and sounds that its cards
// name.
inline const QString Paketendung = QStringLiteral(".pzbz");

bool IstPaket(const QString &pfad);

// What a package would hold beside the card file, or holds.
struct Packliste
{
    QStringList dateien; // bare names, as they lie beside the card file
    qint64 bytes = 0;    // of them
    int fehlend = 0;     // names that cannot come along
    QString bericht;     // German, many lines: what is named and cannot come along; empty where all can
};

// Looks for what the cards of the card file at `kartei` name, in its directory and nowhere else. What
// `progress` throws ends it.
Packliste PacklisteVon(const QString &kartei, const QList<MediaName> &medien, const Progress &progress = {});

// Makes the package at `ziel`, whole or not at all, of the card file, byte for byte, and the files of the
// list. The card file may be open in this program, while nothing changes it. Throws StoreError, and what
// `progress` throws.
void Packen(const QString &kartei, const Packliste &liste, const QString &ziel,
            const Progress &progress = {});

} // namespace paukfix
