// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

#include <QString>

#include <array>
#include <cstddef>

// What the editor's form holds of a card, apart from the window.

inline constexpr std::size_t AntwortBoxen = 5;

// As it is stored in `Antworttyp`. Keine: no option is selected.
enum class Antwortart
{
    Keine = 0,
    Text = 1,
    Ankreuzen = 2
};

// Place and size of a card's picture on the form, in twips.
struct Bildlage
{
    double links = 0, oben = 0, breite = 0, hoehe = 0;

    bool operator==(const Bildlage &) const = default;
};

// Where the picture of a new card goes: over the right part of the question, which makes room for it.
inline constexpr Bildlage BildlageVorgabe{9000, 1350, 3600, 2700};

// File names by slot, entry i for slot i + 1: 1 to 3 pictures, 6 to 8 sounds, for question, right and wrong
// answer. Entry 8 stays empty: slot 9 is the topic.
using Bildnamen = std::array<QString, 9>;

struct Kartenblatt
{
    QString Frage, Frage_Klartext; // RTF, and plain text with CR LF between lines
    std::array<QString, AntwortBoxen> Antwort, Antwort_Klartext;
    // The form holds just the beginning of a text that is too long for it.
    bool Frage_gekuerzt = false;
    std::array<bool, AntwortBoxen> Antwort_gekuerzt{};
    Antwortart art = Antwortart::Text;
    std::array<bool, AntwortBoxen> Antwort_ch{};
    QString Thema;
    Bildnamen pictureNames;
    Bildlage lage = BildlageVorgabe;
};

// Reads the current card; a plain text is not read, the form makes it of the rich text. A number that is
// missing or none counts as its default, and only a card to be ticked has ticks. Throws StoreError.
Kartenblatt BlattLesen(const CardFieldHandles &felder);

// Writes the form into the edit buffer. A plain-text answer, a file name or a topic that is empty keeps what
// the record has, and so does a text that is too long for the form; ticks are written with the ticking type
// only. Throws StoreError.
void WriteFields(const Kartenblatt &blatt, CardFieldHandles &felder);

// Takes texts that are too long for the form from the card that it shows, for a copy of the card. Throws
// StoreError.
void LangesErgaenzen(Kartenblatt &blatt, const CardFieldHandles &felder);

enum class Mangel
{
    Keiner,
    KeineFrage,
    KeineAntwort,
    LeereAntwortAngekreuzt
};

struct Pruefung
{
    Mangel mangel = Mangel::Keiner;
    std::size_t antwort = 0; // the box to go to, for the last two
};

// Whether the card may be stored. Answers may stand in hidden boxes, and no tick at all is accepted.
Pruefung BlattPruefen(const Kartenblatt &blatt);
QString MangelText(Mangel mangel);
