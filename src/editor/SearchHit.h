// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// The state of the card search; lives as long as the program.
struct SearchHit
{
    QString letzterBegriff; // what the dialog's box held when it last closed
    // Orders the hits: FrageNr * 10^12 + the field's code + position * 10^5; 0 after a wrap past the last
    // card. It survives a new term: until the walk wraps, only hits with a greater key count.
    double letzterSchluessel = 0;
    double position = 0; // of the hit in the field's plain text, in characters, from 1; 0 without a hit
    qint16 feld = 0;     // 1 topic, 2 question, 7 to 11 answers 1 to 5; 0 without a hit
    double FrageNr = 0;  // of the card with the hit
};

} // namespace paukfix
