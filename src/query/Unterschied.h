// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace paukfix {

// A part of a text, in UTF-16 units.
struct Stelle
{
    qsizetype anfang = 0;
    qsizetype laenge = 0;

    bool operator==(const Stelle &) const = default;
};

// What parts a typed answer from the solution: the letters that differ in each of the two, and all of it in
// German words ("Großschreibung; zwei Buchstaben haben den Platz getauscht"). Says nothing about the verdict.
struct Unterschied
{
    QList<Stelle> inEingabe, inLoesung;
    QString worte;
};

// Compares letters as a reader sees them: an umlaut is one letter, however it is coded, and line breaks are
// none. Empty where the texts are the same, where they have little in common, or where they are so long that
// nobody would count letters.
Unterschied UnterschiedVon(QStringView eingabe, QStringView loesung);

} // namespace paukfix
