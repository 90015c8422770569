// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Medienzug.h"
#include "Werkbank.h"

#include <QHash>
#include <QStringList>

namespace paukfix {

// Makes a new card file of the open one and opens it instead. The new file takes the place of an old one of
// its name when it is whole and on the disk. A card file that was replaced while it was open is refused.
// Where anything fails, the old files stand as they were and the card file that was open is opened again.
// Where `medien` come along, what of them could not is reported.

// The topic of a card as it is offered: on one line, and a name of its own where there is none.
QString ThemaSchluessel(QString thema);

// Every topic of the cards once, in the order in which it is first met; `zahlen` gets how many cards have it.
// Moves the cursor.
QStringList Themen(CardRecordset &karten, Field thema, QHash<QString, int> *zahlen = nullptr);

// Keeps the cards whose topic is among `uebernehmen`, as they are.
Ausgang ThemenAusfiltern(const Werkbank &bank, const QString &ziel, const QStringList &uebernehmen,
                         Medien medien = Medien::Bleiben);

// Exchanges question and answer of every simple card.
Ausgang KarteiSpiegeln(const Werkbank &bank, const QString &ziel, Medien medien = Medien::Bleiben);

} // namespace paukfix
