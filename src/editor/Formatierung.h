// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "Dialoge.h"

#include <QColor>
#include <QString>
#include <QTextCharFormat>
#include <QTextCursor>

#include <optional>

namespace paukfix {

// The formatting commands, apart from the window: what a selection has, and what a command merges into it.

// The properties of the selected text, or of what is typed at the caret. A value that is not the same
// throughout the selection is not there.
struct Auswahlformat
{
    std::optional<QString> SelFontName; // empty where the text names none
    std::optional<double> SelFontSize;  // points
    std::optional<bool> SelBold, SelItalic, SelStrikeThru, SelUnderline;
    std::optional<QColor> SelColor;   // invalid is the desktop's text colour
    std::optional<int> SelCharOffset; // twips
};

// `amCaret` counts where nothing is selected.
Auswahlformat AuswahlLesen(const QTextCursor &cursor, const QTextCharFormat &amCaret);

// The toggles: a mixed selection gets the attribute, a uniform one changes it.
QTextCharFormat FettFormat(const Auswahlformat &auswahl);
// A mixed italic state makes the selection bold and leaves the italic as it is, as it always has.
QTextCharFormat KursivFormat(const Auswahlformat &auswahl);
QTextCharFormat UnterstrichenFormat(const Auswahlformat &auswahl);

// Raised and lowered text is small and bold; "normal" takes back the offset alone.
QTextCharFormat HochgestelltFormat();
QTextCharFormat TiefgestelltFormat();
QTextCharFormat NormalgestelltFormat();

// What the font dialog starts with, the standard font where the selection does not say or is mixed, and what
// it gives. A family that neither names is not set by it.
Schriftwahl DialogVorgabe(const Auswahlformat &auswahl, const Schrift &standard);
QTextCharFormat DialogFormat(const Schriftwahl &wahl);

// How many times as large as they are stored the texts of a card are shown: the standard font comes as large
// as reads well beside `desktop`. Never smaller.
double Kartenfaktor(const Schrift &standard, const QFont &desktop);

// The standard font of the settings.
QTextCharFormat StandardFormat(const Schrift &schrift);

} // namespace paukfix
