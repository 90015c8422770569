// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Deckbericht.h"
#include "Lauftext.h"
#include "Progress.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace paukfix {

// A medium that a card names: in the deck under its name, or in the card itself.
struct Deckmedium
{
    QString name;      // a plain one, or empty for one that has none
    QByteArray inhalt; // only of one that stands in the card itself
};

// A card of another program, in what a card of ours can hold.
struct Deckkarte
{
    struct Antwort
    {
        Kartentext text;
        bool richtig = true;
    };

    Kartentext frage;
    std::vector<Antwort> antworten; // 1, or up to 5 where they are to be ticked
    bool ankreuzen = false;
    std::optional<Deckmedium> frageBild, frageTon, antwortBild, antwortTon;
    QStringList schlagwoerter;
    QString stapel; // "A::B"
    int fach = 0;   // 0 to 6, by what was learnt
};

// What a deck holds, as far as it is known before its cards are read.
struct Deckinhalt
{
    QString titel;
    QString art; // "Anki-Paket", "KVTML 2"
    int karten = 0;
    QStringList stapel;
    int medien = 0;
};

// A deck of another program, open for reading. Its cards come one after the other, in the deck's order.
// Everything throws StoreError with a German sentence where the deck is damaged or made to harm.
class Deckquelle
{
public:
    Deckquelle() = default;
    Deckquelle(const Deckquelle &) = delete;
    Deckquelle &operator=(const Deckquelle &) = delete;
    virtual ~Deckquelle() = default;

    virtual Deckinhalt Inhalt() const = 0;

    // False behind the last card. What of a card is left behind goes into `bericht`.
    virtual bool Naechste(Deckkarte &karte, Deckbericht &bericht) = 0;

    // How many places of the deck were passed, of Inhalt().karten: more than cards that came.
    virtual int Gelesen() const = 0;

    // The next card is the first one again.
    virtual void VonVorn() = 0;

    // All of a medium; nothing where it cannot be read. May be asked while another thread reads cards.
    virtual std::optional<QByteArray> Medium(const QString &name) = 0;
};

// Largest medium that is read, in bytes.
inline constexpr qint64 GroesstesMedium = qint64{64} << 20;

// Opens a deck by its content: a package (.apkg, .colpkg) or KVTML. Throws StoreError.
std::unique_ptr<Deckquelle> DeckOeffnen(const QString &pfad);

// Whether a file's name is that of a deck.
bool IstDeckname(const QString &name);

} // namespace paukfix
