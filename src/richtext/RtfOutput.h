// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfState.h"

#include <QByteArray>
#include <QHash>
#include <QStringView>

namespace paukfix {

// An RTF text that is written from its beginning to its end, 7-bit ASCII: formats are written where they
// change, and the fonts and colours that were met come into its header.
class RtfOutput
{
public:
    explicit RtfOutput(int tabWidth); // twips

    // `rest`: what the paragraph has beside its alignment, in RTF.
    void BeginParagraph(Qt::Alignment alignment, const QByteArray &rest = {});
    void Format(const RtfCharState &state);
    void Characters(QStringView text);
    // The character at a place of a symbol font.
    void Symbol(unsigned char place);
    void EndParagraph();

    QByteArray Whole() const;

private:
    void Control(const char *word, int number);
    int FontNumber(const QString &family, bool symbol);
    int ColourNumber(QRgb colour);
    QByteArray Header() const;

    QByteArray body_;
    RtfCharState written_; // the format that the text would have now
    QByteArray writtenParagraph_;
    int tabWidth_;
    QList<QPair<QString, bool>> fonts_; // families, and whether they are symbol fonts
    QHash<QPair<QString, bool>, int> fontNumbers_;
    QList<QRgb> colours_;
    QHash<QRgb, int> colourNumbers_;
};

} // namespace paukfix
