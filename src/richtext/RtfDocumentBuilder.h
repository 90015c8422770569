// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "LayoutBound.h"
#include "RtfState.h"

#include <QFont>
#include <QHash>
#include <QTextBlockFormat>
#include <QTextCursor>

class QTextDocument;

namespace paukfix {

// Fills a document with text and paragraphs as they come, within what Qt can lay out:
// - A document is full at its LayoutBound. What comes after that is dropped and a last line "[…]" says so.
// - Each format costs the loading of a font. What needs one more than MaxFormats takes the format before it.
class RtfDocumentBuilder
{
public:
    static constexpr qsizetype MaxFormats = 1'000;

    enum class Formats
    {
        FromState,
        None // the document's own
    };

    // Empties the document; it stays in one edit step until Finish().
    RtfDocumentBuilder(QTextDocument &document, Formats formats);

    // The distance of the tab stops that nobody has set, in twips; before the first text.
    void SetTabWidth(int twips);

    // One UTF-16 unit; control characters for a new line are line separators, NUL and what Qt keeps for
    // itself is dropped.
    void Append(char16_t c, const RtfCharState &state);
    void EndParagraph(const RtfParagraphState &paragraph, const RtfCharState &state);
    // Ends the last paragraph, unless it has ended.
    void Finish(const RtfParagraphState &paragraph, const RtfCharState &state);

    bool isFull() const { return bound_.isExceeded(); }

private:
    void StartRun(const RtfCharState &state);
    void FlushRun();
    void BeginParagraph();
    const QTextCharFormat &CharFormat(const RtfCharState &state);
    const QTextBlockFormat &BlockFormat(const RtfParagraphState &paragraph);

    QTextCursor cursor_;
    QFont defaultFont_;
    Formats formats_;
    int tabWidth_ = 0;
    bool begun_ = false;
    LayoutBound bound_;
    QString run_; // text of one format that is not yet in the document
    RtfCharState runState_;
    bool paragraphEnded_ = false;
    bool paragraphEmpty_ = true;
    bool paragraphTabbed_ = false;
    QHash<RtfCharState, QTextCharFormat> charFormats_;
    QHash<RtfParagraphState, QTextBlockFormat> blockFormats_;
    QTextCharFormat lastCharFormat_;
    QTextBlockFormat lastBlockFormat_;
};

} // namespace paukfix
