// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardAdd.h"
#include "Textform.h"

#include <optional>

namespace paukfix {

// How a text file becomes cards.
struct Aufbau
{
    Zeichensatz zeichensatz = {}; // none: the one that the file makes likely
    Textform form = {};
    bool ueberschrift = false; // the first line is no card
    Spalten spalten = {};
    bool alleFelder = false; // the first line names the fields of cards (FelderText.h)
};

// What the bytes of a text file make likely. With `form` that is taken as it is; where there is no likely one
// too, the usual form is.
Aufbau AufbauRaten(const QByteArray &datei, const Zeichensatz &zeichensatz = {},
                   const std::optional<Textform> &form = {});

// The simple cards of a text: a record with a separator is one. Without quotes the topic is all that follows
// the second separator; nothing is trimmed. In quotes line breaks become CR LF, and records without a text
// are passed over.
class KartenAusText
{
public:
    KartenAusText(Textinhalt inhalt, const Aufbau &aufbau);

    // False where there is no further card. Throws StoreError 13 as TextSaetze does.
    bool Naechste(SimpleCard &karte);

    // Of the card that was read last: its first line in the file, from 1.
    int Zeile() const { return saetze_.Zeile(); }

    // Lines so far that have a text but no separator.
    int Andere() const { return andere_; }

    // The first of these.
    const std::vector<int> &AndereZeilen() const { return andereZeilen_; }

    int Gelesen() const { return saetze_.Gelesen(); }

    int Gesamt() const { return saetze_.Gesamt(); }

private:
    QString Text(int spalte) const;

    Aufbau aufbau_;
    TextSaetze saetze_;
    std::vector<Textfeld> felder_;
    bool ueberschrift_; // is still to be passed over
    int andere_ = 0;
    std::vector<int> andereZeilen_;
};

// "1, 2 und 5", of many the first ones: "1, 2, 3 und weitere".
QString Zeilenliste(const std::vector<int> &zeilen, int anzahl);

} // namespace paukfix
