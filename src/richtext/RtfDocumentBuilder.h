// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfState.h"

#include <QHash>
#include <QTextBlockFormat>
#include <QTextCursor>

class QTextDocument;

// Fills a document with text and paragraphs as they come. Its memory is bounded by the text: a document has
// at most MaxFormats formats of a kind, text beyond that takes the format of the text before it.
class RtfDocumentBuilder
{
public:
    static constexpr qsizetype MaxFormats = 10'000;

    // Empties the document; it stays in one edit step until Finish().
    explicit RtfDocumentBuilder(QTextDocument &document);

    // One UTF-16 unit; line separators are lines, NUL and what Qt keeps for itself is dropped.
    void Append(char16_t c, const RtfCharState &state);
    void EndParagraph(const RtfParagraphState &paragraph, const RtfCharState &state);
    // Ends the last paragraph, unless it has ended.
    void Finish(const RtfParagraphState &paragraph, const RtfCharState &state);

private:
    void FlushRun();
    void BeginParagraph();
    const QTextCharFormat &CharFormat(const RtfCharState &state);
    const QTextBlockFormat &BlockFormat(const RtfParagraphState &paragraph);

    QTextCursor cursor_;
    QFont defaultFont_;
    QString run_; // text of one format that is not yet in the document
    RtfCharState runState_;
    bool paragraphEnded_ = false;
    bool paragraphEmpty_ = true;
    QHash<RtfCharState, QTextCharFormat> charFormats_;
    QHash<RtfParagraphState, QTextBlockFormat> blockFormats_;
    QTextCharFormat lastCharFormat_;
    QTextBlockFormat lastBlockFormat_;
};
