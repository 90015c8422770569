// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Beilagen.h"
#include "CardSource.h"
#include "Deckvorleser.h"

#include <QHash>

#include <array>

namespace paukfix {

// What becomes the topic of a card.
enum class Deckthema
{
    Schlagwoerter,
    Stapel,
    Keines
};

struct Deckwahl
{
    Deckthema thema = Deckthema::Schlagwoerter;
    bool faecher = false; // where a card lies follows what was learnt; else all are new
};

// The kind of answer that the card will have.
double AntworttypVon(const Deckkarte &karte);

// The cards of a deck on their way into a card file, with their pictures and sounds on the way beside it.
// What ends the reading ends the cards, and is told by Hindernis(): nothing of it must be kept then.
class Deckkarten final : public CardSource
{
public:
    Deckkarten(Deckquelle &quelle, const Deckwahl &wahl, Beilagen &beilagen, Deckbericht &bericht);

    int Count() const override { return anzahl_; }

    bool Next() override;
    const std::vector<int> &Columns() const override;
    void Read(int column, CopiedValue &value) override;

    CardPlace Place() const override { return {.fach = wahl_.faecher ? karte_.fach : 0}; }

    const std::optional<StoreError> &Hindernis() const { return hindernis_; }

private:
    enum class Art
    {
        Bild,
        Ton
    };

    // What it can fill, half of what a card has: a place for each of Columns().
    enum Platz : std::size_t
    {
        Typ,
        Frage,
        FrageKlar,
        FrageBild,
        AntwortBild,
        FrageTon,
        AntwortTon,
        KartenThema,
        ErsteAntwort, // five
        ErsteAntwortKlar = ErsteAntwort + 5,
        ErstesKreuz = ErsteAntwortKlar + 5,
        Plaetze = ErstesKreuz + 5
    };

    void Eintragen();
    void Setzen(std::size_t platz, const QString &text);
    void Setzen(std::size_t platz, double zahl);
    QString Thema();
    QString Ablegen(const std::optional<Deckmedium> &medium, Art art);
    QString Wandeln(const Deckmedium &medium, Art art);

    Deckquelle &quelle_; // for its media
    Deckwahl wahl_;
    Beilagen &beilagen_;
    Deckbericht &bericht_;
    int anzahl_;
    Deckkarte karte_;
    std::array<CopiedValue, Plaetze> werte_; // of the card
    QByteArray puffer_;                      // kept, so that texts need no new memory
    QHash<QString, QString> abgelegt_;       // names beside the card file by those in the deck
    std::optional<StoreError> hindernis_;
    Deckvorleser vorleser_; // works as soon as it is there
};

} // namespace paukfix
