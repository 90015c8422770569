// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Zufall.h"

#include <QRect>
#include <QString>

#include <array>
#include <optional>

namespace paukfix {

// The rules of a query, apart from its window.

inline constexpr int AntwortAnzahl = 5;

enum class Antworttyp
{
    Keiner,
    Getippt,
    Ankreuzen
};

using Kreuze = std::array<bool, AntwortAnzahl>;

// The card that is asked, read once when the query opens. Null reads as empty.
struct Abfragekarte
{
    QString FrageNr;
    qint16 FachNr = 0;
    Antworttyp typ = Antworttyp::Keiner;
    QString Thema;
    QString Frage;
    std::array<QString, AntwortAnzahl> Antwort;
    QString Antwort_1_Klartext;
    Kreuze Antwort_ch{};
    // Media names by slot; [0] is not used. 1 to 3 pictures, 6 to 8 sounds: question, right answer, wrong
    // answer.
    std::array<QString, 9> Medium;
    QRect Bildplatz; // pixels on the card; without an area where the card does not say

    bool operator==(const Abfragekarte &) const = default;
};

// Reads the current card. Throws StoreError.
Abfragekarte KarteLesen(const CardFieldHandles &felder);
// The first card of a compartment, which may be asked next, read without a move of the card table; nothing
// where it has none. Throws StoreError.
std::optional<Abfragekarte> KarteVorauslesen(CardRecordset &karten, int fach);

// What a typed answer is compared with: the plain text without line breaks, up to a "Hinweis:".
QString Referenztext(const QString &klartext);
bool GetippteAntwortRichtig(const QString &klartext, const QString &eingabe);

// Right only when all five lines agree, unused ones included.
bool KreuzeRichtig(const Kreuze &kreuze, const Kreuze &loesung);

// A random order of the answer lines: line i takes the place that line [i] had.
std::array<int, AntwortAnzahl> AntwortenMischen(Zufall &zufall);

// Where a card of compartment `fach` goes, in a sentence.
QString Wohin(int fach, bool richtig);

// The card's own picture and sound for a verdict; empty where it has none.
const QString &BildNachUrteil(const Abfragekarte &karte, bool richtig);
const QString &KlangNachUrteil(const Abfragekarte &karte, bool richtig);

} // namespace paukfix
