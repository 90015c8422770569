// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace paukfix {

// What of a deck does not go over as it is, or not at all; from another program to a card, or the other way.
enum class Deckrest
{
    OhneFrage,        // left out: there is nothing to ask
    ZuLang,           // left out: more than a card can hold
    Unlesbar,         // left out: without a text or a template
    OhneAntwort,      // comes, without an answer
    WeitereBilder,    // a card has one picture a side
    WeitereToene,     // and one sound
    MediumFehlt,      // named, but not in the deck
    MediumUnlesbar,   // of a kind that is not known, damaged or too large
    MediumFern,       // somewhere in the net
    Video,            // and what else moves
    WeitereThemen,    // did not fit into one topic
    WeitereAntworten, // more than five answers to tick
    MehrereRichtig,   // ticks that a form does not know
    Hinweis,          // that is folded away
    Ausgesetzt,       // suspended or buried; comes like any other
    Vorlage,          // a template that cannot be read
    Hintergrund,
    Verweis,
    Tabelle,
    Liste,
    Skript,
    Formel,     // comes as a text
    Wortangabe, // pronunciation, comments and forms of words
    WeitereSprache,
    Markierung,
    Lernverlauf,
    Format,       // of a text, in a form that knows none
    Bildlage,     // where on a card a picture stands
    FalschMedium, // shown or played after a wrong answer only
    Zeichen,      // that a form cannot hold
    Medienliste,
    FalscherZeichensatz, // bytes that do not fit to what the file says of them
    Anzahl
};

// What was left behind: how often, and of which cards first.
class Deckbericht
{
public:
    void Melden(Deckrest rest, const QString &beispiel = {}, int mal = 1);

    // What was left behind of cards that came later.
    void Dazu(const Deckbericht &spaeter);

    int Zahl(Deckrest rest) const;
    int Summe() const;

    // German; a paragraph a kind. Empty where nothing is left behind.
    QString Text() const;

private:
    struct Eintrag
    {
        int zahl = 0;
        QStringList beispiele;
        bool weitere = false; // than these
    };

    static void Aufnehmen(Eintrag &eintrag, const QString &beispiel);

    std::array<Eintrag, static_cast<std::size_t>(Deckrest::Anzahl)> eintraege_;
};

} // namespace paukfix
