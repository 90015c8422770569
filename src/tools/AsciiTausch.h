// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KartenAusText.h"
#include "Werkbank.h"

#include <optional>
#include <vector>

namespace paukfix {

// The exchange of cards as delimited text: simple cards, a card a line, question, answer and topic parted by
// one character, with or without quotes; or cards with all their fields (FelderText.h).

// What the box of separators shows for the tabulator.
QString TabText();

// The separator that a text of that box stands for; nothing for any other text.
std::optional<QChar> Trennzeichen(const QString &text);
// The same; any other text is reported.
std::optional<QChar> Trennzeichen(Meldungen &meldungen, const QString &text);

// How an export is written.
struct Exportwahl
{
    // A line a card, as spreadsheets and word processors without quotes have it.
    Exportwahl(QChar trennzeichen) : form{.trennzeichen = trennzeichen} {}

    Exportwahl(char16_t trennzeichen) : Exportwahl(QChar(trennzeichen)) {}

    Textform form;
    bool utf8 = false;       // where Windows-1252 would do too
    bool alleFelder = false; // every card with all that it has
};

// Writes all cards with a typed answer, or all cards with all their fields, to a text file, which takes the
// place of an old one when it is whole. Moves the cursor.
Ausgang AsciiExportieren(const Werkbank &bank, const QString &dateiname, const Exportwahl &wahl);

// How an import reads its file.
struct Importwahl
{
    // A line a card without quotes, in the encoding that the file makes likely.
    Importwahl(QChar trennzeichen) { aufbau.form.trennzeichen = trennzeichen; }

    Importwahl(char16_t trennzeichen) : Importwahl(QChar(trennzeichen)) {}

    explicit Importwahl(Aufbau wie) : aufbau(std::move(wie)) {}

    Aufbau aufbau;
    Vorhandene vorhandene = Vorhandene::Uebernehmen;
    bool mitFaechern = true; // where the file tells them
};

// What an import that was stored did.
struct Zugang
{
    int karten = 0;      // added
    int fehlen = 0;      // cards of the file that are not in the box
    int ausgelassen = 0; // as the box had them
    int erneuert = 0;
    int andere = 0;          // lines with a text but no separator
    bool leer = false;       // nothing at all is in the file
    std::vector<int> zeilen; // of cards that did not come in whole
    QString trennzeichen;    // as learners know it
};

// What is told of an import where all went well; why, where no card came in.
QString ErfolgreichEingelesen(const QString &dateiname, const Zugang &zugang);

// What is told of an import that could not take everything: so that nobody reads the file again for what is
// missing.
QString TeilweiseEingelesen(const Zugang &zugang);

// Adds the cards of a text file: simple ones to compartment 0, others where they were. All counters follow. A
// file that is not there is reported by its name; how to read bytes that do not fit its encoding is asked.
Ausgang AsciiImportieren(const Werkbank &bank, const QString &dateiname, const Importwahl &wahl,
                         Zugang *zugang = nullptr);

// More than a full box of long cards; a text file is read whole.
inline constexpr qint64 GroessteTextdatei = qint64{256} << 20; // bytes

} // namespace paukfix
