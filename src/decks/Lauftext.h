// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QRgb>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace paukfix {

// How a run of characters looks. What is not set is left to the card.
struct Laufformat
{
    bool fett = false, kursiv = false, unterstrichen = false, durchgestrichen = false;
    signed char lage = 0; // 1 raised, -1 lowered
    short versatz = 0;    // raised by so many twips, or lowered
    short halbpunkte = 0; // size in half-points, 0 for the card's own
    int schrift = -1;     // place in Lauftext::schriften
    std::optional<QRgb> farbe;

    bool operator==(const Laufformat &) const = default;
};

enum class Ausrichtung : unsigned char
{
    Links,
    Mitte,
    Rechts,
    Block
};

// A text of lines with formats, as a card can hold it, and nothing else.
struct Lauftext
{
    struct Lauf
    {
        qsizetype von = 0; // up to the next one, or the text's end
        Laufformat format;
    };

    struct Absatz
    {
        qsizetype von = 0; // first character of a line
        Ausrichtung ausrichtung = Ausrichtung::Links;
    };

    QString text;                 // lines parted by '\n'
    std::vector<Lauf> laeufe;     // from the first character on, or none
    std::vector<Absatz> absaetze; // lines that do not stand at the left, or follow one that does not
    QStringList schriften;

    bool IstFormatiert() const;
};

// As the fields of a card hold it: RTF, or the plain text where nothing is formatted, and the plain text
// beside it. Lines are parted by CR LF.
struct Kartentext
{
    QString reich, klar;
};

// Nothing where it is more than can be laid out.
std::optional<Kartentext> AlsKartentext(const Lauftext &text);

} // namespace paukfix
