// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfReader.h"

#include <algorithm>

namespace paukfix {

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
    : tokens_(rtf), text_(document, input)
{
}

bool RtfReader::Read()
{
    using Kind = RtfTokenizer::Kind;
    for (Kind kind = tokens_.Next(); kind != Kind::End && !text_.Builder().isFull(); kind = tokens_.Next()) {
        if (kind == Kind::GroupEnd && depth_ <= 1)
            break; // what follows the document is not of it
        const bool known = kind == Kind::Word && IsStarredDestination(tokens_.word());
        if (std::exchange(starred_, false) && !known)
            SkipGroup(); // a destination for others
        const bool shown = skipDepth_ == 0;
        // The second byte of a character may be an escaped one.
        if (shown && kind != Kind::Byte && kind != Kind::Text && !(kind == Kind::Symbol && text_.isLead()))
            text_.FlushBytes();
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
                text_.Byte(tokens_.byte());
            break;
        case Kind::Text:
            if (shown)
                for (const QChar c : tokens_.text())
                    text_.TextUnit(c.unicode());
            break;
        case Kind::End:
            break;
        }
        if (kind != Kind::Symbol || tokens_.symbol() != u'*')
            groupStart_ = false;
    }
    text_.FlushBytes();
    text_.Builder().Finish(text_.state.paragraph, text_.state.text);
    return !text_.Builder().isFull();
}

void RtfReader::BeginGroup()
{
    ++depth_;
    groupStart_ = true;
    text_.SetSkipped(0);
    if (depth_ <= MaxSavedGroups)
        groups_.push_back(text_.state);
}

void RtfReader::EndGroup()
{
    if (skipDepth_ == depth_)
        skipDepth_ = 0;
    text_.SetSkipped(0);
    if (depth_ <= MaxSavedGroups) {
        const bool fontsRead = text_.state.destination == Destination::FontTable &&
                               groups_.back().destination == Destination::Body;
        const bool fieldRead = text_.state.destination == Destination::FieldInstruction &&
                               groups_.back().destination == Destination::Body;
        text_.state = std::move(groups_.back());
        groups_.pop_back();
        if (fontsRead) {
            text_.FinishFont();
            text_.SelectFont(text_.header.defaultFont);
        }
        if (fieldRead)
            text_.FinishField();
    }
    --depth_;
}

void RtfReader::EndParagraph()
{
    text_.Builder().EndParagraph(text_.state.paragraph, text_.state.text);
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
        text_.state.destination = destination;
}

void RtfReader::Word()
{
    if (tokens_.word() == "bin") {
        text_.SetSkipped(std::max(0, text_.Skipped() - 1));
        return;
    }
    const RtfKeyword *const keyword = FindRtfKeyword(tokens_.word());
    if (keyword == nullptr)
        return;
    if (keyword->action == RtfAction::Character) {
        text_.Character(static_cast<char16_t>(keyword->value));
        return;
    }
    text_.SetSkipped(0);
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
        text_.state.fieldShown = false;
        break;
    case RtfAction::FieldInstruction:
        EnterDestination(Destination::FieldInstruction);
        text_.BeginField();
        break;
    case RtfAction::FieldResult:
        if (text_.state.fieldShown)
            SkipGroup();
        break;
    case RtfAction::NestedRow:
        EnterDestination(Destination::NestedRow);
        break;
    case RtfAction::RowEnd:
        if (text_.isShown() || (text_.state.destination == Destination::NestedRow && !text_.state.hidden))
            EndParagraph();
        break;
    case RtfAction::Paragraph:
        if (text_.isShown())
            EndParagraph();
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

void RtfReader::Symbol()
{
    switch (tokens_.symbol()) {
    case u'*':
        starred_ = groupStart_;
        break;
    case u'\\':
    case u'{':
    case u'}':
    case u'\t':
        text_.TextUnit(tokens_.symbol());
        return;
    case u'~':
        text_.Character(u'\u00A0');
        break;
    case u'-':
        text_.Character(u'\u00AD');
        break;
    case u'_':
        text_.Character(u'\u2011');
        break;
    case u'\r':
    case u'\n':
        if (text_.isShown())
            EndParagraph();
        break;
    default:
        break;
    }
}

void RtfReader::FormatCharacters(const RtfKeyword &keyword)
{
    RtfCharState &text = text_.state.text;
    const int number = tokens_.parameter();
    const bool on = !tokens_.hasParameter() || number != 0;
    switch (keyword.action) {
    case RtfAction::Font:
    case RtfAction::AssociatedFont:
    case RtfAction::TextKind:
        text_.FontOfKind(keyword, number);
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
        text_.state.hidden = on;
        break;
    case RtfAction::Underline:
        text.underline =
            on ? static_cast<QTextCharFormat::UnderlineStyle>(keyword.value) : QTextCharFormat::NoUnderline;
        break;
    case RtfAction::Colour:
        text.colour = number >= 0 && static_cast<std::size_t>(number) < text_.header.colours.size()
                          ? text_.header.colours[static_cast<std::size_t>(number)]
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
        text_.state.hidden = false;
        text_.state.textKind = -1;
        text_.state.kindFonts.fill(-1);
        text_.state.font = text_.header.defaultFont;
        text_.SelectFont(text_.header.defaultFont);
        break;
    default:
        break;
    }
}

void RtfReader::FormatParagraph(const RtfKeyword &keyword)
{
    RtfParagraphState &paragraph = text_.state.paragraph;
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
    if (text_.state.paragraph.tabs.size() < MaxTabStops)
        text_.state.paragraph.tabs.append(tab);
    tabKind_ = QTextOption::LeftTab;
}

void RtfReader::DescribeText(const RtfKeyword &keyword)
{
    const int number = tokens_.parameter();
    const auto part = static_cast<QRgb>(std::clamp(number, 0, 0xFF));
    switch (keyword.action) {
    case RtfAction::Unicode:
        text_.Unicode(number);
        break;
    case RtfAction::UnicodeSkip:
        text_.state.unicodeSkip = std::max(0, number);
        break;
    case RtfAction::CodePage:
        SetDocumentCodePage(keyword.value != 0 ? keyword.value : number);
        break;
    case RtfAction::DefaultFont:
        text_.header.defaultFont = number;
        break;
    case RtfAction::Charset:
        text_.SetFontCodePage(CodePageOfCharset(number, text_.header.codePage));
        break;
    case RtfAction::TabWidth:
        text_.Builder().SetTabWidth(std::clamp(number, 0, MaxTwips));
        break;
    case RtfAction::FontCodePage:
        text_.SetFontCodePage(number);
        break;
    case RtfAction::Red:
        text_.header.tableColour = (text_.header.tableColour & 0x00FFFFU) | part << 16U;
        break;
    case RtfAction::Green:
        text_.header.tableColour = (text_.header.tableColour & 0xFF00FFU) | part << 8U;
        break;
    case RtfAction::Blue:
        text_.header.tableColour = (text_.header.tableColour & 0xFFFF00U) | part;
        break;
    default:
        break;
    }
}

void RtfReader::SetDocumentCodePage(int codePage)
{
    text_.header.codePage = codePage;
    text_.state.codePage = codePage;
}

} // namespace paukfix
