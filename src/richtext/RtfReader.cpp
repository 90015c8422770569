// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfReader.h"

#include <algorithm>

namespace {
// Groups nested deeper than this share one state.
constexpr qsizetype MaxSavedGroups = 10'000;
constexpr int MaxTwips = 31'680; // 22 inches, as far as paper and RTF go
constexpr int MaxHalfPoints = 3'276;
constexpr int DefaultOffset = 6; // half-points of \up and \dn without a number
constexpr qsizetype MaxTabStops = 64;

bool IsStarredDestination(std::string_view word)
{
    return word == "fldinst" || word == "nesttableprops";
}

int Length(int twips)
{
    return std::clamp(twips, 0, MaxTwips);
}
} // namespace

RtfReader::RtfReader(QTextDocument &document, QStringView rtf, Input input)
    : tokens_(rtf), input_(input), builder_(document, RtfDocumentBuilder::Formats::FromState)
{
}

bool RtfReader::Read()
{
    using Kind = RtfTokenizer::Kind;
    for (Kind kind = tokens_.Next(); kind != Kind::End && !builder_.isFull(); kind = tokens_.Next()) {
        if (kind == Kind::GroupEnd && depth_ <= 1)
            break; // what follows the document is not of it
        const bool known = kind == Kind::Word && IsStarredDestination(tokens_.word());
        if (std::exchange(starred_, false) && !known)
            SkipGroup(); // a destination for others
        const bool shown = skipDepth_ == 0;
        // The second byte of a character may be an escaped one.
        if (shown && kind != Kind::Byte && kind != Kind::Text && !(kind == Kind::Symbol && lead_))
            FlushBytes();
        switch (kind) {
        case Kind::GroupStart:
            BeginGroup();
            continue; // groupStart_ holds for the next token
        case Kind::GroupEnd:
            EndGroup();
            break;
        case Kind::Word:
            if (shown)
                Word();
            break;
        case Kind::Symbol:
            if (shown)
                Symbol();
            break;
        case Kind::Byte:
            if (shown)
                Byte(tokens_.byte());
            break;
        case Kind::Text:
            if (shown)
                Text();
            break;
        case Kind::End:
            break;
        }
        if (kind != Kind::Symbol || tokens_.symbol() != u'*')
            groupStart_ = false;
    }
    FlushBytes();
    builder_.Finish(state_.paragraph, state_.text);
    return !builder_.isFull();
}

void RtfReader::BeginGroup()
{
    ++depth_;
    groupStart_ = true;
    skipCharacters_ = 0;
    if (depth_ <= MaxSavedGroups)
        groups_.push_back(state_);
}

void RtfReader::EndGroup()
{
    if (skipDepth_ == depth_)
        skipDepth_ = 0;
    skipCharacters_ = 0;
    if (depth_ <= MaxSavedGroups) {
        const bool fontsRead =
            state_.destination == Destination::FontTable && groups_.back().destination == Destination::Body;
        const bool fieldRead = state_.destination == Destination::FieldInstruction &&
                               groups_.back().destination == Destination::Body;
        state_ = std::move(groups_.back());
        groups_.pop_back();
        if (fontsRead) {
            FinishFont();
            SelectFont(defaultFont_);
        }
        if (fieldRead)
            FinishField();
    }
    --depth_;
}

// The document's own group is all text: a stray control would hide everything.

void RtfReader::SkipGroup()
{
    if (depth_ > 1)
        skipDepth_ = depth_;
}

void RtfReader::EnterDestination(Destination destination)
{
    if (depth_ > 1)
        state_.destination = destination;
}

void RtfReader::Word()
{
    if (tokens_.word() == "bin") {
        skipCharacters_ = std::max(0, skipCharacters_ - 1);
        return;
    }
    const RtfKeyword *const keyword = FindRtfKeyword(tokens_.word());
    if (keyword == nullptr)
        return;
    if (keyword->action == RtfAction::Character) {
        Character(static_cast<char16_t>(keyword->value));
        return;
    }
    skipCharacters_ = 0;
    switch (keyword->action) {
    case RtfAction::Skip:
        SkipGroup();
        break;
    case RtfAction::FontTable:
        EnterDestination(Destination::FontTable);
        break;
    case RtfAction::ColourTable:
        EnterDestination(Destination::ColourTable);
        break;
    case RtfAction::Field:
        state_.fieldShown = false;
        break;
    case RtfAction::FieldInstruction:
        EnterDestination(Destination::FieldInstruction);
        instruction_.clear();
        break;
    case RtfAction::FieldResult:
        if (state_.fieldShown)
            SkipGroup();
        break;
    case RtfAction::NestedRow:
        EnterDestination(Destination::NestedRow);
        break;
    case RtfAction::RowEnd:
        if (isShown() || (state_.destination == Destination::NestedRow && !state_.hidden))
            builder_.EndParagraph(state_.paragraph, state_.text);
        break;
    case RtfAction::Paragraph:
        if (isShown())
            builder_.EndParagraph(state_.paragraph, state_.text);
        break;
    default:
        if (keyword->action < RtfAction::ParagraphDefaults)
            FormatCharacters(*keyword);
        else if (keyword->action < RtfAction::Unicode)
            FormatParagraph(*keyword);
        else
            DescribeText(*keyword);
    }
}

void RtfReader::FormatCharacters(const RtfKeyword &keyword)
{
    RtfCharState &text = state_.text;
    const int number = tokens_.parameter();
    const bool on = !tokens_.hasParameter() || number != 0;
    switch (keyword.action) {
    case RtfAction::Font:
    case RtfAction::AssociatedFont:
    case RtfAction::TextKind:
        FontOfKind(keyword);
        break;
    case RtfAction::Size:
        text.halfPoints = std::clamp(number, 0, MaxHalfPoints);
        break;
    case RtfAction::Bold:
        text.bold = on;
        break;
    case RtfAction::Italic:
        text.italic = on;
        break;
    case RtfAction::StrikeOut:
        text.strikeOut = on;
        break;
    case RtfAction::Hidden:
        state_.hidden = on;
        break;
    case RtfAction::Underline:
        text.underline =
            on ? static_cast<QTextCharFormat::UnderlineStyle>(keyword.value) : QTextCharFormat::NoUnderline;
        break;
    case RtfAction::Colour:
        text.colour = number >= 0 && static_cast<std::size_t>(number) < colours_.size()
                          ? colours_[static_cast<std::size_t>(number)]
                          : 0;
        break;
    case RtfAction::Raise:
    case RtfAction::Lower: {
        const int size = std::clamp(tokens_.hasParameter() ? number : DefaultOffset, 0, MaxHalfPoints);
        text.offset = (keyword.action == RtfAction::Raise ? size : -size) * TwipsPerHalfPoint;
        text.script = QTextCharFormat::AlignNormal;
        break;
    }
    case RtfAction::Script:
        text.offset = 0;
        text.script = on ? static_cast<QTextCharFormat::VerticalAlignment>(keyword.value)
                         : QTextCharFormat::AlignNormal;
        break;
    case RtfAction::Plain:
        text = {};
        state_.hidden = false;
        state_.textKind = -1;
        state_.kindFonts.fill(-1);
        state_.font = defaultFont_;
        SelectFont(defaultFont_);
        break;
    default:
        break;
    }
}

void RtfReader::FormatParagraph(const RtfKeyword &keyword)
{
    RtfParagraphState &paragraph = state_.paragraph;
    const int number = tokens_.parameter();
    switch (keyword.action) {
    case RtfAction::ParagraphDefaults:
        paragraph = {};
        break;
    case RtfAction::Alignment:
        paragraph.alignment = static_cast<Qt::AlignmentFlag>(keyword.value);
        break;
    case RtfAction::LeftIndent:
        paragraph.left = Length(number);
        break;
    case RtfAction::RightIndent:
        paragraph.right = Length(number);
        break;
    case RtfAction::FirstIndent:
        paragraph.first = std::clamp(number, -MaxTwips, MaxTwips);
        break;
    case RtfAction::SpaceBefore:
        paragraph.before = Length(number);
        break;
    case RtfAction::SpaceAfter:
        paragraph.after = Length(number);
        break;
    case RtfAction::TabKind:
        tabKind_ = static_cast<QTextOption::TabType>(keyword.value);
        break;
    case RtfAction::TabStop:
        AddTabStop(std::clamp(number, -MaxTwips, MaxTwips));
        break;
    default:
        break;
    }
}

void RtfReader::AddTabStop(int twips)
{
    QTextOption::Tab tab(Pixels(twips), tabKind_);
    if (tabKind_ == QTextOption::DelimiterTab)
        tab.delimiter = u',';
    if (state_.paragraph.tabs.size() < MaxTabStops)
        state_.paragraph.tabs.append(tab);
    tabKind_ = QTextOption::LeftTab;
}

void RtfReader::DescribeText(const RtfKeyword &keyword)
{
    const int number = tokens_.parameter();
    const auto part = static_cast<QRgb>(std::clamp(number, 0, 0xFF));
    switch (keyword.action) {
    case RtfAction::Unicode:
        Unicode(number);
        break;
    case RtfAction::UnicodeSkip:
        state_.unicodeSkip = std::max(0, number);
        break;
    case RtfAction::CodePage:
        SetDocumentCodePage(keyword.value != 0 ? keyword.value : number);
        break;
    case RtfAction::DefaultFont:
        defaultFont_ = number;
        break;
    case RtfAction::Charset:
        if (state_.destination == Destination::FontTable)
            fonts_[tableFont_].codePage = state_.codePage = CodePageOfCharset(number, documentCodePage_);
        break;
    case RtfAction::TabWidth:
        builder_.SetTabWidth(std::clamp(number, 0, MaxTwips));
        break;
    case RtfAction::FontCodePage:
        if (state_.destination == Destination::FontTable)
            fonts_[tableFont_].codePage = state_.codePage = number;
        break;
    case RtfAction::Red:
        tableColour_ = (tableColour_ & 0x00FFFFU) | part << 16U;
        break;
    case RtfAction::Green:
        tableColour_ = (tableColour_ & 0xFF00FFU) | part << 8U;
        break;
    case RtfAction::Blue:
        tableColour_ = (tableColour_ & 0xFFFF00U) | part;
        break;
    default:
        break;
    }
}

void RtfReader::SetDocumentCodePage(int codePage)
{
    documentCodePage_ = codePage;
    state_.codePage = codePage;
}
