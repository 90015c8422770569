// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QHashFunctions>
#include <QList>
#include <QTextCharFormat>
#include <QTextOption>

#include <cmath>

namespace paukfix {

// What RTF's controls have set for the text to come.

struct RtfCharState
{
    QString family;      // empty: the document's own
    bool symbol = false; // the characters are places of this font, see SymbolFont.h
    int halfPoints = 0;  // 0: the document's own
    bool bold = false;
    bool italic = false;
    bool strikeOut = false;
    QTextCharFormat::UnderlineStyle underline = QTextCharFormat::NoUnderline;
    QRgb colour = 0; // 0x00RRGGBB; black is "automatic"
    int offset = 0;  // twips, > 0 is raised
    QTextCharFormat::VerticalAlignment script = QTextCharFormat::AlignNormal;

    bool operator==(const RtfCharState &) const = default;
};

inline size_t qHash(const RtfCharState &state, size_t seed = 0)
{
    return qHashMulti(seed, state.family, state.symbol, state.halfPoints, state.bold, state.italic,
                      state.strikeOut, static_cast<int>(state.underline), state.colour, state.offset,
                      static_cast<int>(state.script));
}

// Lengths in twips.
struct RtfParagraphState
{
    Qt::AlignmentFlag alignment = Qt::AlignLeft;
    int left = 0;
    int right = 0;
    int first = 0; // of the first line, against `left`
    int before = 0;
    int after = 0;
    bool tabbed = false;          // there are tabs in the paragraph
    QList<QTextOption::Tab> tabs; // positions in logical pixels from the text's margin, indents left out

    bool operator==(const RtfParagraphState &) const = default;
};

inline size_t qHash(const RtfParagraphState &state, size_t seed = 0)
{
    return qHashMulti(seed, static_cast<int>(state.alignment), state.left, state.right, state.first,
                      state.before, state.after, state.tabbed, state.tabs.size());
}

inline constexpr int TwipsPerPixel = 15;
inline constexpr int TwipsPerHalfPoint = 10;

// Logical pixels.
inline double Pixels(int twips)
{
    return twips / double(TwipsPerPixel);
}

inline int Twips(double pixels)
{
    return static_cast<int>(std::lround(pixels * TwipsPerPixel));
}

} // namespace paukfix
