// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Schrift.h"

#include "Dialoge.h"

namespace paukfix {

QColor Schrift::Farbe() const
{
    return {Color & 0xFF, Color >> 8 & 0xFF, Color >> 16 & 0xFF};
}

Schriftwahl Schrift::Wahl() const
{
    QFont font;
    if (!FontName.isEmpty())
        font.setFamily(FontName);
    font.setPointSizeF(double{FontSize});
    font.setBold(FontBold);
    font.setItalic(FontItalic);
    font.setStrikeOut(FontStrikethru);
    font.setUnderline(FontUnderline);
    return {font, Farbe()};
}

void Schrift::Nehmen(const Schriftwahl &wahl)
{
    FontName = wahl.font.family();
    FontSize = static_cast<float>(wahl.font.pointSizeF());
    FontBold = wahl.font.bold();
    FontItalic = wahl.font.italic();
    FontStrikethru = wahl.font.strikeOut();
    FontUnderline = wahl.font.underline();
    Color = wahl.farbe.red() | wahl.farbe.green() << 8 | wahl.farbe.blue() << 16;
}

} // namespace paukfix
