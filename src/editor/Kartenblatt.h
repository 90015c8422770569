// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

#include <QString>

#include <array>
#include <cstddef>

namespace paukfix {

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

// The moments of a query for which a card names a picture and a sound each, and where they begin in that
// list.
inline constexpr std::size_t Momente = 3;
inline constexpr std::size_t ErsterBildplatz = 0;
inline constexpr std::size_t ErsterTonplatz = 5;
QString Moment(std::size_t welcher); // "Frage", "Antwort", "falscher Antwort"

struct Kartenblatt
{
    QString Frage, Frage_Klartext; // RTF, and plain text with CR LF between lines
    std::array<QString, AntwortBoxen> Antwort, Antwort_Klartext;
    // The writer has changed the text; one that he has not is left in the record as it is.
    bool Frage_bearbeitet = true;
    std::array<bool, AntwortBoxen> Antwort_bearbeitet{true, true, true, true, true};
    // The record's text holds what the form cannot show, such as a picture: it is not empty.
    bool Frage_unsichtbar = false;
    std::array<bool, AntwortBoxen> Antwort_unsichtbar{};
    Antwortart art = Antwortart::Text;
    std::array<bool, AntwortBoxen> Antwort_ch{};
    QString Thema;
    Bildnamen pictureNames;
    Bildlage lage = BildlageVorgabe;
};

// Reads the current card; a plain text is not read, the form makes it of the rich text. A number that is
// missing or none counts as its default. The ticks of a card that is not to be ticked are read, too: it may
// become one again. Throws StoreError.
Kartenblatt BlattLesen(const CardFieldHandles &felder);

// Writes the form into the edit buffer. A text that was not changed keeps what the record has, and so does a
// plain-text answer, a file name or a topic that is empty; ticks are written with the ticking type only.
// Throws StoreError.
void WriteFields(const Kartenblatt &blatt, CardFieldHandles &felder);

// A card's texts as its record has them, formatted and plain, byte for byte; a null is one.
struct Rohtexte
{
    QVariant Frage, Frage_Klartext;
    std::array<QVariant, AntwortBoxen> Antwort, Antwort_Klartext;
};

// Those of the current card, and, for a copy of it, into the edit buffer, where the form has no change of its
// own. Throw StoreError.
Rohtexte RohtexteLesen(const CardFieldHandles &felder);
void RohtexteSchreiben(const Rohtexte &texte, const Kartenblatt &blatt, CardFieldHandles &felder);

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

// Whether the card may be stored. Answers may stand in hidden boxes, and no tick at all is accepted. Ticks
// that are not shown are no mistake.
Pruefung BlattPruefen(const Kartenblatt &blatt);
QString MangelText(Mangel mangel);

} // namespace paukfix
