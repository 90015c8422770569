// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <string_view>

namespace paukfix {

// What a control word does. Words that are not listed do nothing.
enum class RtfAction
{
    Character, // value: the character
    Skip,      // a destination whose text is not the document's
    FontTable,
    ColourTable,
    Field,
    FieldInstruction,
    FieldResult,
    NestedRow, // a destination whose \nestrow counts
    RowEnd,    // of a table within a table
    Paragraph, // ends a paragraph
    // character formatting
    Font,
    AssociatedFont, // for text of the kind named before
    TextKind,       // value: 0 to 2 for low, high and double-byte characters, -1 for any
    Size,
    Bold,
    Italic,
    StrikeOut,
    Hidden,
    Underline, // value: QTextCharFormat::UnderlineStyle
    Colour,
    Raise,
    Lower,
    Script, // value: QTextCharFormat::VerticalAlignment
    Plain,
    // paragraph formatting
    ParagraphDefaults,
    Alignment, // value: Qt::AlignmentFlag
    LeftIndent,
    RightIndent,
    FirstIndent,
    SpaceBefore,
    SpaceAfter,
    TabStop,
    TabKind, // value: QTextOption::TabType, for the next tab stop
    // characters by number
    Unicode,
    UnicodeSkip,
    TabWidth,
    CodePage, // value: the code page, 0 for the word's parameter
    // inside the tables
    DefaultFont,
    Charset,
    FontCodePage,
    Red,
    Green,
    Blue
};

struct RtfKeyword
{
    std::string_view word;
    RtfAction action;
    int value;
};

// Null for a word that means nothing here.
const RtfKeyword *FindRtfKeyword(std::string_view word);

} // namespace paukfix
