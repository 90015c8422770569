// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>

namespace paukfix {

// The colours of the box itself, the same on a light and on a dark desktop: it is a thing, as are its cards.
// They belong to the family of assets/palette.md. Texts on them have a contrast of 4.5 and more.
namespace KastenFarben {

inline constexpr QColor Tinte{0x33, 0x30, 0x4A}; // lettering on paper and honey
inline constexpr QColor Papier{0xFF, 0xFD, 0xF8};
inline constexpr QColor PapierSchatten{0xE9, 0xE2, 0xD6};
inline constexpr QColor Honig{0xF8, 0xBE, 0x45}; // the card that comes next
inline constexpr QColor HonigDunkel{0xE3, 0x9A, 0x2B};
inline constexpr QColor Petrol{0x2F, 0x6B, 0x7E};       // the box
inline constexpr QColor PetrolDunkel{0x1F, 0x4C, 0x5C}; // its inside
inline constexpr QColor PetrolHell{0x56, 0x97, 0xA8};   // its upper edges
inline constexpr QColor PetrolSeite{0x25, 0x58, 0x69};  // sides in the shade
inline constexpr QColor PetrolBoden{0x18, 0x36, 0x42};
inline constexpr QColor Koralle{0xEF, 0x6F, 0x5C};
inline constexpr QColor Rosa{0xF9, 0xA5, 0x8F};
inline constexpr QColor Minze{0x37, 0xB2, 0x95}; // the done cards
inline constexpr QColor MinzeDunkel{0x23, 0x83, 0x6C};
inline constexpr QColor MinzeSeite{0x1D, 0x69, 0x57};
inline constexpr QColor MinzeInnen{0x18, 0x55, 0x46};
inline constexpr QColor MinzeBoden{0x10, 0x38, 0x2E};
inline constexpr QColor Warnung{0xB5, 0x19, 0x0F}; // lettering on paper
inline constexpr QColor Himmel{0xA9, 0xD8, 0xE6};

} // namespace KastenFarben

} // namespace paukfix
