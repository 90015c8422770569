// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QString>

namespace paukfix {

struct Schriftwahl;

// The standard font for the text of new cards, as the configuration file keeps it.
struct Schrift
{
    QString FontName;    // empty: the program's own
    float FontSize = 10; // points, more than 0
    bool FontBold = false, FontItalic = false, FontStrikethru = false, FontUnderline = false;
    qint32 Color = 0; // blue-green-red: red in the lowest byte

    QColor Farbe() const;
    // What a font dialog begins with, and what it has chosen.
    Schriftwahl Wahl() const;
    void Nehmen(const Schriftwahl &wahl);
};

} // namespace paukfix
