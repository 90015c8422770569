// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Deckkarten.h"
#include "Kartenabgleich.h"
#include "Werkbank.h"

#include <memory>
#include <optional>

namespace paukfix {

// What a deck of another program would bring, found by reading all of it once.
struct Deckvorschau
{
    Deckinhalt inhalt;
    int karten = 0;                         // that come
    QString beispielFrage, beispielAntwort; // of the first of them
    bool hatSchlagwoerter = false, hatStapel = false, hatLernstand = false;
    int bekannt = 0;       // that the open card file has, as far as their texts tell
    int andereAntwort = 0; // whose question it has with another answer
    Deckbericht bericht;
};

Deckvorschau DeckAnsehen(const Werkbank &bank, Deckquelle &quelle);

struct Einlesewahl
{
    Deckwahl deck;
    std::optional<QString> neueKartei = {}; // its file; else the cards go into the open one
    Vorhandene vorhandene = Vorhandene::Uebernehmen;
};

// What came of it.
struct Eingelesenes
{
    int karten = 0, ausgelassen = 0, erneuert = 0;
    qsizetype medien = 0;
    QString rest; // what was left behind; mostly something
};

// Reads a deck into the open card file, in one step that can be taken back, or into a new one, which is
// opened then. Pictures and sounds are put beside it. Where it fails or is cancelled, nothing has changed,
// and that was told.
Ausgang FremdEinlesen(const Werkbank &bank, Deckquelle &quelle, const QString &name, const Einlesewahl &wahl,
                      Eingelesenes &ergebnis);

} // namespace paukfix
