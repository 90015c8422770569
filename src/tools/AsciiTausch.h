// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkbank.h"

#include <optional>

namespace paukfix {

// The exchange of simple cards as delimited text: a card a line, question, answer and topic parted by one
// character, no quoting.

// What the box of separators shows for the tabulator.
QString TabText();

// The separator that a text of that box stands for; nothing for any other text.
std::optional<QChar> Trennzeichen(const QString &text);
// The same; any other text is reported.
std::optional<QChar> Trennzeichen(Meldungen &meldungen, const QString &text);

// Writes all cards with a typed answer to a text file, which takes the place of an old one when it is whole.
// Moves the cursor.
Ausgang AsciiExportieren(const Werkbank &bank, const QString &dateiname, QChar trennzeichen);

// What an import that was stored did.
struct Zugang
{
    int karten = 0; // added
    int fehlen = 0; // lines of cards that are not in the box
};

// What is told of an import that could not take everything: so that nobody reads the file again for what is
// missing.
QString TeilweiseEingelesen(const Zugang &zugang);

// What an import of a text file would do, as far as it can be told before.
struct Zeilenzahl
{
    int karten = 0;
    int andere = 0; // lines with a text but no separator
};

// Nothing where there is no such file, or where it is too large to be read for this, or no text.
std::optional<Zeilenzahl> ZeilenZaehlen(const CardStore &store, const QString &dateiname, QChar trennzeichen);

// Adds a card to compartment 0 for each line of a text file that has a separator. All counters follow. A file
// that is not there is reported by its name.
Ausgang AsciiImportieren(const Werkbank &bank, const QString &dateiname, QChar trennzeichen,
                         Zugang *zugang = nullptr);

} // namespace paukfix
