// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QPalette>

#include <array>

namespace paukfix {

// The program's own colours beside the desktop's palette, in their light and their dark set. Each text has a
// contrast of at least 4.5 with the ground it is named for, each outline at least 3. Honey (`akzent`) means
// "this is next" and marks one button of a window at most; red and green are verdicts.
struct Hausfarben
{
    QColor karte;                  // the ground of a card
    QColor tinte;                  // text on a card
    QColor leiseTinte;             // quiet text on a card
    QColor antwortzone;            // the answer's part of a card
    QColor feld;                   // the ground of an input field
    QColor umriss;                 // outline of fields, cards and buttons, on all of these and on the window
    QColor akzent;                 // honey
    QColor akzentTinte;            // text on honey
    QColor akzentUmriss;           // outline of honey on the window
    QColor fokus;                  // ring around what has the keyboard
    QColor falschText;             // on falschGrund
    QColor falschGrund;            //
    QColor richtigText;            // on richtigGrund
    QColor richtigGrund;           //
    QColor gewaehlt;               // the ground of what is pressed or selected
    QColor leise;                  // quiet text on the window
    QColor linie;                  // the rule below the head of every card
    std::array<QColor, 7> faecher; // shares of Neu, 1 to 5 and erledigt, in diagrams
};

// The set that suits `palette`: the dark one where its window is darker than its text.
const Hausfarben &HausfarbenZu(const QPalette &palette);

} // namespace paukfix
