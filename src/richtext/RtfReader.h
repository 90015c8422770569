// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfCodePage.h"
#include "RtfDocumentBuilder.h"
#include "RtfKeywords.h"
#include "RtfState.h"
#include "RtfTokenizer.h"

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
        ColourTable
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
    void FormatCharacters(const RtfKeyword &keyword);
    void FormatParagraph(const RtfKeyword &keyword);
    void DescribeText(const RtfKeyword &keyword);
    void SkipGroup();
    void EnterTable(Destination table);
    void SelectFont(int number);
    void SetDocumentCodePage(int codePage);
    void AddTabStop(int twips);

    // The character goes where the current destination wants it, unless it stands for a \u before.
    void Character(char16_t c);
    void Byte(unsigned char byte);
    void FlushBytes();
    void Unicode(int value);
    void Put(char16_t c);
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
    int skipCharacters_ = 0;  // still to come after a \u
    QByteArray bytes_;        // of a multi-byte code page, not yet decoded

    std::map<int, Font> fonts_;
    int defaultFont_ = -1;
    int documentCodePage_ = WesternCodePage;
    int tableFont_ = 0;
    QString fontName_;
    std::vector<QRgb> colours_;
    QRgb tableColour_ = 0;
    QTextOption::TabType tabKind_ = QTextOption::LeftTab;
    std::map<int, RtfCodePage> codePages_;
};
