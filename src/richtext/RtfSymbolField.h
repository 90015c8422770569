// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <optional>

namespace paukfix {

// What a field "SYMBOL 183 \\f "Symbol" \\s 12" shows.
struct RtfSymbolField
{
    char32_t code = 0;
    QString family;       // empty: that of the text
    int halfPoints = 0;   // 0: those of the text
    bool unicode = false; // the code is a character's, not a place in the font
};

// No longer instruction is looked at.
inline constexpr qsizetype MaxSymbolInstruction = 256;

// Nothing for other fields, and for codes that no character has.
std::optional<RtfSymbolField> ReadSymbolField(const QString &instruction);

} // namespace paukfix
