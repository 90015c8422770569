// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfCodePage.h"
#include "RtfDocumentBuilder.h"
#include "RtfKeywords.h"
#include "RtfState.h"
#include "RtfTokenizer.h"

#include <QSet>

#include <array>
#include <map>
#include <vector>

// Reads one RTF text into a document, in one pass, without recursion, with memory in proportion to the text.
class RtfReader
{
public:
    // How characters above 0x7F stand in the text.
    enum class Input
    {
        Text, // as themselves
        Bytes // as bytes (0x80 to 0xFF) of the current font's code page
    };

    RtfReader(QTextDocument &document, QStringView rtf, Input input);
    // False when the document was full before the end.
    bool Read();

private:
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

    struct Font
    {
        QString family;
        int codePage = 0; // 0: the document's
    };

    void BeginGroup();
    void EndGroup();
    void Word();
    void Symbol();
    void Text();
    void TextUnit(char16_t unit);
    void FormatCharacters(const RtfKeyword &keyword);
    void FormatParagraph(const RtfKeyword &keyword);
    void DescribeText(const RtfKeyword &keyword);
    void SkipGroup();
    void EnterDestination(Destination destination);

    bool isShown() const { return state_.destination == Destination::Body && !state_.hidden; }

    bool isSymbolText() const { return state_.destination == Destination::Body && state_.text.symbol; }

    void SelectFont(int number);
    void FontOfKind(const RtfKeyword &keyword);
    void FinishField();
    void SetDocumentCodePage(int codePage);
    void AddTabStop(int twips);

    // The character goes where the current destination wants it, unless it stands for a \u before.
    void Character(char16_t c);
    void Byte(unsigned char byte);
    void FlushBytes();
    void Unicode(int value);
    void Put(char16_t c);
    void PutCodePoint(char32_t c, const RtfCharState &text);
    void PutSymbol(unsigned char place);
    void FinishFont();
    RtfCodePage &CurrentCodePage();

    RtfTokenizer tokens_;
    Input input_;
    RtfDocumentBuilder builder_;

    State state_;
    std::vector<State> groups_;
    qsizetype depth_ = 0;
    qsizetype skipDepth_ = 0; // the group that is skipped, 0 for none
    bool groupStart_ = false; // the token before was the group's brace
    bool starred_ = false;    // the token before was the star of a destination
    int skipCharacters_ = 0;  // still to come after a \u
    QByteArray bytes_;        // of a multi-byte code page, not yet decoded
    bool lead_ = false;       // the last of them needs another one
    QString instruction_;     // of the field
    RtfCharState instructionText_;

    std::map<int, Font> fonts_;
    QSet<QString> symbolFamilies_; // of them
    int defaultFont_ = -1;
    int documentCodePage_ = WesternCodePage;
    int tableFont_ = 0;
    QString fontName_;
    std::vector<QRgb> colours_;
    QRgb tableColour_ = 0;
    QTextOption::TabType tabKind_ = QTextOption::LeftTab;
    std::map<int, RtfCodePage> codePages_;
};
