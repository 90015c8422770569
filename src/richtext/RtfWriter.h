// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfOutput.h"

#include <QByteArray>
#include <QFont>

class QTextBlock;
class QTextDocument;

namespace paukfix {

// Writes a document as RTF.
class RtfWriter
{
public:
    enum class LastParagraph
    {
        Ended, // by \par, as every other
        Open   // goes on where it is pasted
    };

    explicit RtfWriter(const QTextDocument &document);
    QByteArray Write(LastParagraph last);

private:
    RtfCharState CharState(const QTextCharFormat &format) const;
    void WriteParagraphFormat(const QTextBlock &block);
    void WriteText(const QTextBlock &block);
    // Of a font that has pictures at the places of letters.
    void WriteSymbols(const RtfCharState &state, const QString &text);

    const QTextDocument &document_;
    QFont defaultFont_;
    int tabWidth_; // twips
    RtfOutput out_;
};

} // namespace paukfix
