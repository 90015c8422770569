// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfState.h"

#include <QFont>
#include <QHash>
#include <QTextBlockFormat>
#include <QTextCursor>

class QTextDocument;

// Fills a document with text and paragraphs as they come, within what Qt can lay out:
// - A document is full when it would be about MaxHeight high. Its layout takes up to 50 bytes a character and
//   500 a line, and does not come back from lines below 8,388,607 pixels. What comes after that is dropped
//   and a last line "[…]" says so. At 12 points this is a million characters or 125,000 lines.
// - Each format costs the loading of a font. What needs one more than MaxFormats takes the format before it.
class RtfDocumentBuilder
{
public:
    static constexpr double MaxHeight = 3'000'000; // logical pixels
    static constexpr qsizetype MaxFormats = 1'000;

    enum class Formats
    {
        FromState,
        None // the document's own
    };

    // Empties the document; it stays in one edit step until Finish().
    RtfDocumentBuilder(QTextDocument &document, Formats formats);

    // One UTF-16 unit; control characters for a new line are line separators, NUL and what Qt keeps for
    // itself is dropped.
    void Append(char16_t c, const RtfCharState &state);
    void EndParagraph(const RtfParagraphState &paragraph, const RtfCharState &state);
    // Ends the last paragraph, unless it has ended.
    void Finish(const RtfParagraphState &paragraph, const RtfCharState &state);

    bool isFull() const { return height_ > MaxHeight; }

private:
    void StartRun(const RtfCharState &state);
    void FlushRun();
    void BeginParagraph();
    double LineHeight(const RtfCharState &state) const;
    const QTextCharFormat &CharFormat(const RtfCharState &state);
    const QTextBlockFormat &BlockFormat(const RtfParagraphState &paragraph);

    QTextCursor cursor_;
    QFont defaultFont_;
    Formats formats_;
    int usualHalfPoints_;
    double height_ = 0;         // an estimate, on the safe side
    double paragraphLines_ = 0; // the paragraph's height if each character had a line of its own
    QString run_;               // text of one format that is not yet in the document
    RtfCharState runState_;
    bool paragraphEnded_ = false;
    bool paragraphEmpty_ = true;
    QHash<RtfCharState, QTextCharFormat> charFormats_;
    QHash<RtfParagraphState, QTextBlockFormat> blockFormats_;
    QTextCharFormat lastCharFormat_;
    QTextBlockFormat lastBlockFormat_;
};
