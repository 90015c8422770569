// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfDocumentBuilder.h"

#include "CharFormat.h"
#include "RtfTabs.h"
#include "SymbolFont.h"

#include <QTextDocument>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {
// Frame borders and the placeholder of objects: noncharacters and markers that Qt's documents are built with.
bool IsReserved(char16_t c)
{
    return c == u'\0' || c == u'\uFDD0' || c == u'\uFDD1' || c == u'\uFFFC';
}

// Halves of surrogate pairs that stand alone are no characters.
void ReplaceLoneSurrogates(QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSurrogate())
            continue;
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

QTextCharFormat MakeCharFormat(const RtfCharState &state, const QFont &defaultFont)
{
    QTextCharFormat format;
    // A symbol font on this machine may show nothing for the Unicode characters.
    const bool otherFontShows = state.symbol && HasSymbolTable(state.family);
    if (!state.family.isEmpty() && !otherFontShows)
        format.setFontFamilies({state.family});
    if (state.symbol)
        format.setProperty(SymbolFontProperty, state.family);
    if (state.halfPoints > 0)
        format.setFontPointSize(state.halfPoints / 2.0);
    // Said also where it is "no": the document's default font may be bold.
    format.setFontWeight(state.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(state.italic);
    format.setFontStrikeOut(state.strikeOut);
    format.setUnderlineStyle(state.underline);
    if (state.colour != 0)
        SetTextColour(format, QColor(state.colour));
    if (state.script != QTextCharFormat::AlignNormal)
        format.setVerticalAlignment(state.script);
    else if (state.offset != 0)
        SetCharOffset(format, state.offset, defaultFont);
    return format;
}

QTextBlockFormat MakeBlockFormat(const RtfParagraphState &paragraph, int tabWidth)
{
    QTextBlockFormat format;
    if (paragraph.alignment != Qt::AlignLeft)
        format.setAlignment(paragraph.alignment);
    if (paragraph.left != 0)
        format.setLeftMargin(Pixels(paragraph.left));
    if (paragraph.right != 0)
        format.setRightMargin(Pixels(paragraph.right));
    if (paragraph.first != 0)
        format.setTextIndent(Pixels(paragraph.first));
    if (paragraph.before != 0)
        format.setTopMargin(Pixels(paragraph.before));
    if (paragraph.after != 0)
        format.setBottomMargin(Pixels(paragraph.after));
    const QList<QTextOption::Tab> tabs = ShownTabs(paragraph, tabWidth, paragraph.tabbed);
    if (!tabs.isEmpty())
        format.setTabPositions(tabs);
    return format;
}
} // namespace

RtfDocumentBuilder::RtfDocumentBuilder(QTextDocument &document, Formats formats)
    : defaultFont_(document.defaultFont()), formats_(formats), bound_(defaultFont_)
{
    document.clear();
    cursor_ = QTextCursor(&document);
    cursor_.beginEditBlock();
    SetTabWidth(UsualTabWidth);
}

void RtfDocumentBuilder::SetTabWidth(int twips)
{
    if (begun_ || twips <= 0 || twips == tabWidth_)
        return;
    tabWidth_ = twips;
    QTextDocument &document = *cursor_.document();
    QTextOption option = document.defaultTextOption();
    option.setTabStopDistance(Pixels(twips));
    document.setDefaultTextOption(option);
}

void RtfDocumentBuilder::Append(char16_t c, const RtfCharState &state)
{
    if (IsReserved(c) || isFull())
        return;
    if (paragraphEnded_)
        BeginParagraph();
    begun_ = true;
    paragraphTabbed_ = paragraphTabbed_ || c == u'\t';
    StartRun(state);
    const bool breaksLine = c == u'\r' || c == u'\n' || c == u'\v' || c == u'\u2028';
    const char16_t shown = breaksLine ? u'\u2028' : c;
    run_ += QChar(shown);
    bound_.AddCharacter(shown, state.halfPoints);
}

void RtfDocumentBuilder::StartRun(const RtfCharState &state)
{
    if (state == runState_)
        return;
    FlushRun();
    runState_ = state;
}

void RtfDocumentBuilder::FlushRun()
{
    if (run_.isEmpty())
        return;
    ReplaceLoneSurrogates(run_);
    cursor_.insertText(run_, CharFormat(runState_));
    paragraphEmpty_ = false;
    run_.resize(0); // keeps the memory for the next run
    bound_.AddRun();
}

void RtfDocumentBuilder::BeginParagraph()
{
    cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
    paragraphEnded_ = false;
    paragraphEmpty_ = true;
    paragraphTabbed_ = false;
}

void RtfDocumentBuilder::EndParagraph(const RtfParagraphState &paragraph, const RtfCharState &state)
{
    if (isFull())
        return;
    if (paragraphEnded_)
        BeginParagraph();
    FlushRun();
    const int indents = paragraph.left + paragraph.right + std::max(paragraph.first, 0);
    if (bound_.EndParagraph(state.halfPoints, Pixels(indents), Pixels(paragraph.before + paragraph.after)))
        cursor_.setBlockFormat(BlockFormat(paragraph));
    begun_ = true;
    if (paragraphEmpty_) // its height, and the format of what is typed there
        cursor_.setBlockCharFormat(CharFormat(state));
    paragraphEnded_ = true;
}

void RtfDocumentBuilder::Finish(const RtfParagraphState &paragraph, const RtfCharState &state)
{
    if (isFull()) {
        FlushRun();
        cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
        cursor_.insertText(u"[\u2026]"_s);
    } else if (!paragraphEnded_) {
        EndParagraph(paragraph, state);
    }
    cursor_.endEditBlock();
}

const QTextCharFormat &RtfDocumentBuilder::CharFormat(const RtfCharState &state)
{
    if (formats_ == Formats::None)
        return lastCharFormat_;
    const auto found = charFormats_.constFind(state);
    if (found != charFormats_.constEnd()) {
        lastCharFormat_ = *found;
    } else if (charFormats_.size() < MaxFormats) {
        lastCharFormat_ = MakeCharFormat(state, defaultFont_);
        charFormats_.insert(state, lastCharFormat_);
    }
    return lastCharFormat_;
}

const QTextBlockFormat &RtfDocumentBuilder::BlockFormat(const RtfParagraphState &paragraph)
{
    if (formats_ == Formats::None)
        return lastBlockFormat_;
    RtfParagraphState key = paragraph;
    key.tabbed = paragraphTabbed_;
    const auto found = blockFormats_.constFind(key);
    if (found != blockFormats_.constEnd()) {
        lastBlockFormat_ = *found;
    } else if (blockFormats_.size() < MaxFormats) {
        lastBlockFormat_ = MakeBlockFormat(key, tabWidth_);
        blockFormats_.insert(key, lastBlockFormat_);
    }
    return lastBlockFormat_;
}

} // namespace paukfix
