// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfKeywords.h"
#include "RtfText.h"
#include "RtfTokenizer.h"

#include <vector>

namespace paukfix {

// Reads one RTF text into a document, in one pass, without recursion, with memory in proportion to the text.
class RtfReader
{
public:
    using Input = RtfText::Input;

    RtfReader(QTextDocument &document, QStringView rtf, Input input);
    // False when the document was full before the end.
    bool Read();

private:
    using Destination = RtfText::Destination;

    void BeginGroup();
    void EndGroup();
    void Word();
    void Symbol();
    void FormatCharacters(const RtfKeyword &keyword);
    void FormatParagraph(const RtfKeyword &keyword);
    void DescribeText(const RtfKeyword &keyword);
    void SkipGroup();
    void EnterDestination(Destination destination);

    void EndParagraph();
    void SetDocumentCodePage(int codePage);
    void AddTabStop(int twips);

    RtfTokenizer tokens_;
    RtfText text_;
    std::vector<RtfText::State> groups_;
    qsizetype depth_ = 0;
    qsizetype skipDepth_ = 0; // the group that is skipped, 0 for none
    bool groupStart_ = false; // the token before was the group's brace
    bool starred_ = false;    // the token before was the star of a destination
    QTextOption::TabType tabKind_ = QTextOption::LeftTab;
};

} // namespace paukfix
