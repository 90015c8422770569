// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfCodePage.h"
#include "RtfDocumentBuilder.h"
#include "RtfKeywords.h"
#include "RtfState.h"

#include <QSet>
#include <QString>

#include <array>
#include <map>
#include <vector>

namespace paukfix {

// The way of the characters from an RTF text into the document: which font they have, what they mean there.
class RtfText
{
public:
    // How characters above 0x7F stand in the text.
    enum class Input
    {
        Text, // as themselves
        Bytes // as bytes (0x80 to 0xFF) of the current font's code page
    };

    enum class Destination
    {
        Body,
        FontTable,
        ColourTable,
        FieldInstruction,
        NestedRow // only \nestrow counts
    };

    // What a group restores at its end.
    struct State
    {
        RtfCharState text;
        RtfParagraphState paragraph;
        Destination destination = Destination::Body;
        int codePage = WesternCodePage;
        int unicodeSkip = 1; // how many characters follow a \u for readers that do not know it
        bool hidden = false;
        bool fieldShown = false; // the field that we are in needs no result
        int textKind = -1;       // which of `kindFonts` counts, -1 for none
        std::array<int, 3> kindFonts{-1, -1, -1};
        int font = -1; // for text of no kind
    };

    // The header's tables and numbers.
    struct Header
    {
        int defaultFont = -1;
        int codePage = WesternCodePage;
        std::vector<QRgb> colours;
        QRgb tableColour = 0; // the next one of the table
    };

    RtfText(QTextDocument &document, Input input);

    RtfDocumentBuilder &Builder() { return builder_; }

    bool isShown() const { return state.destination == Destination::Body && !state.hidden; }

    // The first byte of a character was read; the second one is missing.
    bool isLead() const { return lead_; }

    void SelectFont(int number);
    // Word processors name a font for each kind of characters and then say of which kind the text is.
    void FontOfKind(const RtfKeyword &keyword, int number);
    // The code page that the font of the table has.
    void SetFontCodePage(int codePage);
    void FinishFont();
    void BeginField();
    void FinishField();

    // As it stands in the text.
    void TextUnit(char16_t unit);
    // The character goes where the current destination wants it, unless it stands for a \u before.
    void Character(char16_t c);
    void Byte(unsigned char byte);
    void Unicode(int value);
    // Decodes the bytes that have been waiting for more.
    void FlushBytes();

    // How many characters are still to come after a \u.
    void SetSkipped(int characters) { skipCharacters_ = characters; }

    int Skipped() const { return skipCharacters_; }

    State state;
    Header header;

private:
    struct Font
    {
        QString family;
        int codePage = 0; // 0: the document's
    };

    bool isSymbolText() const { return state.destination == Destination::Body && state.text.symbol; }

    void Put(char16_t c);
    void PutInBody(char16_t c);
    void PutCodePoint(char32_t c, const RtfCharState &text);
    void PutSymbol(unsigned char place);
    RtfCodePage &CurrentCodePage();

    Input input_;
    RtfDocumentBuilder builder_;
    int skipCharacters_ = 0;
    QByteArray bytes_;    // of a multi-byte code page, not yet decoded
    bool lead_ = false;   // the last of them needs another one
    QString instruction_; // of the field
    RtfCharState instructionText_;
    std::map<int, Font> fonts_;
    QSet<QString> symbolFamilies_; // of them
    int tableFont_ = 0;
    QString fontName_;
    std::map<int, RtfCodePage> codePages_;
};

} // namespace paukfix
