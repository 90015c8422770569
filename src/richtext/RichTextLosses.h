// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QFlags>
#include <QStringView>

namespace paukfix {

// What a text of another word processor holds and a document of ours does not: it is gone when the document
// is written in the text's place.
enum class RichTextLoss
{
    Pictures = 1 << 0,
    Objects = 1 << 1,
    Drawings = 1 << 2,
    Tables = 1 << 3, // their texts stay, as paragraphs
    Lists = 1 << 4,  // the numbers and bullets stay, as text
    Formulas = 1 << 5,
    Footnotes = 1 << 6,
    Comments = 1 << 7,
    Fields = 1 << 8, // their results stay
    HeadersFooters = 1 << 9,
    HiddenText = 1 << 10,
    Highlight = 1 << 11,
    Effects = 1 << 12, // small capitals, outlines, unusual underlines, wide letters
    Borders = 1 << 13,
    Breaks = 1 << 14, // of pages; they become paragraphs
    Other = 1 << 15   // in a destination that is not known here
};
Q_DECLARE_FLAGS(RichTextLosses, RichTextLoss)

// What SetRichText leaves out of `text`; nothing for text that is not RTF. Not told is what describes the
// document as a whole (its author, style sheet, language) and what hardly shows (line spacing, kerning).
// Takes linear time.
RichTextLosses LossesOf(QStringView text);

} // namespace paukfix

Q_DECLARE_OPERATORS_FOR_FLAGS(paukfix::RichTextLosses)
