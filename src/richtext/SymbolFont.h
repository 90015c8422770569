// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QStringView>

namespace paukfix {

// Fonts that have pictures at the places of letters, 0x20 to 0xFF (character set 2 of RTF).

// True for fonts whose name alone tells it.
bool IsSymbolFont(QStringView family);

// True where SymbolCharacter knows the characters: then another font can show them.
bool HasSymbolTable(QStringView family);

// The character that the font shows at a place. For fonts and places without a Unicode character it is in the
// private area, U+F000 and up, where such fonts have it; below 0x20 it is the control character.
char32_t SymbolCharacter(QStringView family, unsigned char place);

// The place that shows the character, or 0.
unsigned char SymbolPlace(QStringView family, char32_t character);

} // namespace paukfix
