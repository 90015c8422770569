// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardMedia.h"
#include "Kartenabgleich.h"
#include "Medienzug.h"
#include "Werkbank.h"

#include <optional>

namespace paukfix {

// Copies every card of the card file `quelle` to compartment 0 of the open one, and opens that again. The
// open file itself is refused by message, as is a file of its name in a directory whose path is as long as
// KarteiPfad. The source is only read; it may be one of the former database engine, or damaged: then what a
// repair would find is taken over. What failed is told when the box shows what came of it.

struct Angehaengt
{
    int karten = 0;
    qsizetype medien = 0; // pictures and sounds that were copied
    int ausgelassen = 0;  // cards that the box had
    int erneuert = 0;     // cards of the box that have got another answer
};

Ausgang KarteiAnhaengen(const Werkbank &bank, const QString &quelle, Medien medien = Medien::Bleiben,
                        Angehaengt *angehaengt = nullptr, Vorhandene vorhandene = Vorhandene::Uebernehmen);

// What the sound card file `quelle` holds. Nothing where there is none of that name, or where it would have
// to be mended or converted first.
struct Anhang
{
    int karten = 0;
    QList<MediaName> medien;
    int bekannt = 0;       // cards that the open box has
    int andereAntwort = 0; // cards whose question it has with another answer
};

std::optional<Anhang> AnhangIn(CardStore &store, const QString &quelle);

} // namespace paukfix
