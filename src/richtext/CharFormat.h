// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QFont>
#include <QTextCharFormat>

namespace paukfix {

// Character properties that Qt's own formats cannot say exactly. The setters give formats that are fit for
// merging into a selection.

// How far the text is raised (> 0) or lowered (< 0), in twips, an int. Not there means 0.
inline constexpr int CharOffsetProperty = QTextFormat::UserProperty + 1;

// The family that was a symbol font where the text was read, a string: its characters are written as places
// of that font again. Counts only while the format has this family or none.
inline constexpr int SymbolFontProperty = QTextFormat::UserProperty + 2;

int CharOffset(const QTextCharFormat &format);

// Sets the offset and, so that it shows, the base line, which Qt wants in percent of the font's height: set
// the font size first. `defaultFont` counts where the format has no size. Ends super- and subscript. The base
// line moves by 40 percent at most, so that the text stays readable on its line; the offset itself is kept.
void SetCharOffset(QTextCharFormat &format, int twips, const QFont &defaultFont = {});

// The text colour; an invalid colour is "automatic", the palette's. Pure black is automatic in both
// directions.
QColor TextColour(const QTextCharFormat &format);
void SetTextColour(QTextCharFormat &format, const QColor &colour);

} // namespace paukfix
