// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfState.h"

#include <QByteArray>
#include <QFont>
#include <QHash>

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
    void WriteCharFormat(const RtfCharState &state);
    void WriteCharacters(const QString &text);
    // Of a font that has pictures at the places of letters.
    void WriteSymbols(const RtfCharState &state, const QString &text);
    void Control(const char *word, int number);
    int FontNumber(const QString &family, bool symbol);
    int ColourNumber(QRgb colour);
    QByteArray Header() const;

    const QTextDocument &document_;
    QFont defaultFont_;
    QByteArray body_;
    RtfCharState written_; // the format that the text would have now
    QByteArray writtenParagraph_;
    int tabWidth_;                      // twips
    QList<QPair<QString, bool>> fonts_; // families, and whether they are symbol fonts
    QHash<QPair<QString, bool>, int> fontNumbers_;
    QList<QRgb> colours_;
    QHash<QRgb, int> colourNumbers_;
};

} // namespace paukfix
