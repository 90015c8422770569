// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"
#include "Deckbericht.h"
#include "Progress.h"

#include <QString>

#include <functional>

namespace paukfix {

// Cards on their way to another program.
struct Deckausgabe
{
    QString titel;
    QString medien; // the directory of the card file, where pictures and sounds lie
    int anzahl = 0;
    // Gives the cards in the order of their box; false behind the last one.
    std::function<bool(CardRecord &karte)> naechste;
    Progress progress = {};
};

// Writes a package of schema 11, which every program of the kind reads. Nothing may stand at `pfad`; not
// synced. What it cannot hold goes into `bericht`. Both throw StoreError.
void ApkgSchreiben(const QString &pfad, const Deckausgabe &deck, Deckbericht &bericht);

// Writes KVTML 2. Pictures and sounds are copied into the directory `medien`, of which the file speaks as
// `medienname`; it is made where it is needed. An empty `medien`: they lie beside the file already.
void KvtmlSchreiben(const QString &pfad, const QString &medien, const QString &medienname,
                    const Deckausgabe &deck, Deckbericht &bericht);

// What both cannot hold of a card.
void KartenrestMelden(const CardRecord &karte, Deckbericht &bericht);

// The path of a picture or sound that a card names; empty, and told, where there is none.
QString Medienpfad(const Deckausgabe &deck, const QString &name, Deckbericht &bericht);

} // namespace paukfix
