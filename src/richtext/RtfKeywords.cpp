// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfKeywords.h"

#include "RtfCodePage.h"

#include <QTextCharFormat>
#include <QTextOption>

#include <algorithm>
#include <array>

namespace paukfix {

namespace {
using A = RtfAction;

// Sorted by word.
constexpr auto Keywords = std::to_array<RtfKeyword>({
    {"af", A::AssociatedFont, 0},
    {"annotation", A::Skip, 0},
    {"ansi", A::CodePage, WesternCodePage},
    {"ansicpg", A::CodePage, 0},
    {"atnauthor", A::Skip, 0},
    {"b", A::Bold, 0},
    {"background", A::Skip, 0},
    {"blue", A::Blue, 0},
    {"bullet", A::Character, 0x2022},
    {"cell", A::Character, '\t'},
    {"cf", A::Colour, 0},
    {"colortbl", A::ColourTable, 0},
    {"column", A::Paragraph, 0},
    {"comment", A::Skip, 0},
    {"cpg", A::FontCodePage, 0},
    {"dbch", A::TextKind, 2},
    {"deff", A::DefaultFont, 0},
    {"deftab", A::TabWidth, 0},
    {"deleted", A::Hidden, 0},
    {"dn", A::Lower, 0},
    {"emdash", A::Character, 0x2014},
    {"emspace", A::Character, 0x2003},
    {"endash", A::Character, 0x2013},
    {"enspace", A::Character, 0x2002},
    {"f", A::Font, 0},
    {"fcharset", A::Charset, 0},
    {"fi", A::FirstIndent, 0},
    {"field", A::Field, 0},
    {"filetbl", A::Skip, 0},
    {"fldinst", A::FieldInstruction, 0},
    {"fldrslt", A::FieldResult, 0},
    {"fonttbl", A::FontTable, 0},
    {"footer", A::Skip, 0},
    {"footerf", A::Skip, 0},
    {"footerl", A::Skip, 0},
    {"footerr", A::Skip, 0},
    {"footnote", A::Skip, 0},
    {"fs", A::Size, 0},
    {"green", A::Green, 0},
    {"header", A::Skip, 0},
    {"headerf", A::Skip, 0},
    {"headerl", A::Skip, 0},
    {"headerr", A::Skip, 0},
    {"hich", A::TextKind, 1},
    {"i", A::Italic, 0},
    {"info", A::Skip, 0},
    {"ldblquote", A::Character, 0x201C},
    {"li", A::LeftIndent, 0},
    {"line", A::Character, 0x2028},
    {"listtable", A::Skip, 0},
    {"loch", A::TextKind, 0},
    {"lquote", A::Character, 0x2018},
    {"ltrch", A::TextKind, -1},
    {"ltrmark", A::Character, 0x200E},
    {"mac", A::CodePage, MacCodePage},
    {"nestcell", A::Character, '\t'},
    {"nestrow", A::RowEnd, 0},
    {"nesttableprops", A::NestedRow, 0},
    {"nonesttables", A::Skip, 0},
    {"nosupersub", A::Script, QTextCharFormat::AlignNormal},
    {"object", A::Skip, 0},
    {"page", A::Paragraph, 0},
    {"par", A::Paragraph, 0},
    {"pard", A::ParagraphDefaults, 0},
    {"pc", A::CodePage, 437},
    {"pca", A::CodePage, 850},
    {"pict", A::Skip, 0},
    {"plain", A::Plain, 0},
    {"pn", A::Skip, 0},
    {"private", A::Skip, 0},
    {"qc", A::Alignment, Qt::AlignHCenter},
    {"qj", A::Alignment, Qt::AlignJustify},
    {"ql", A::Alignment, Qt::AlignLeft},
    {"qmspace", A::Character, 0x2005},
    {"qr", A::Alignment, Qt::AlignRight},
    {"rdblquote", A::Character, 0x201D},
    {"red", A::Red, 0},
    {"revtbl", A::Skip, 0},
    {"ri", A::RightIndent, 0},
    {"row", A::Paragraph, 0},
    {"rquote", A::Character, 0x2019},
    {"rtlch", A::TextKind, -1},
    {"rtlmark", A::Character, 0x200F},
    {"rxe", A::Skip, 0},
    {"sa", A::SpaceAfter, 0},
    {"sb", A::SpaceBefore, 0},
    {"sect", A::Paragraph, 0},
    {"shp", A::Skip, 0},
    {"softline", A::Character, 0x2028},
    {"strike", A::StrikeOut, 0},
    {"striked", A::StrikeOut, 0},
    {"stylesheet", A::Skip, 0},
    {"sub", A::Script, QTextCharFormat::AlignSubScript},
    {"super", A::Script, QTextCharFormat::AlignSuperScript},
    {"tab", A::Character, '\t'},
    {"tc", A::Skip, 0},
    {"tqc", A::TabKind, QTextOption::CenterTab},
    {"tqdec", A::TabKind, QTextOption::DelimiterTab},
    {"tqr", A::TabKind, QTextOption::RightTab},
    {"tx", A::TabStop, 0},
    {"txe", A::Skip, 0},
    {"u", A::Unicode, 0},
    {"uc", A::UnicodeSkip, 0},
    {"ul", A::Underline, QTextCharFormat::SingleUnderline},
    {"uld", A::Underline, QTextCharFormat::DotLine},
    {"uldash", A::Underline, QTextCharFormat::DashUnderline},
    {"uldashd", A::Underline, QTextCharFormat::DashDotLine},
    {"uldashdd", A::Underline, QTextCharFormat::DashDotDotLine},
    {"uldb", A::Underline, QTextCharFormat::SingleUnderline},
    {"ulhwave", A::Underline, QTextCharFormat::WaveUnderline},
    {"ulldash", A::Underline, QTextCharFormat::DashUnderline},
    {"ulnone", A::Underline, QTextCharFormat::NoUnderline},
    {"ulth", A::Underline, QTextCharFormat::SingleUnderline},
    {"ulthd", A::Underline, QTextCharFormat::DotLine},
    {"ulthdash", A::Underline, QTextCharFormat::DashUnderline},
    {"ulthdashd", A::Underline, QTextCharFormat::DashDotLine},
    {"ulthdashdd", A::Underline, QTextCharFormat::DashDotDotLine},
    {"ulthldash", A::Underline, QTextCharFormat::DashUnderline},
    {"ululdbwave", A::Underline, QTextCharFormat::WaveUnderline},
    {"ulw", A::Underline, QTextCharFormat::SingleUnderline},
    {"ulwave", A::Underline, QTextCharFormat::WaveUnderline},
    {"up", A::Raise, 0},
    {"v", A::Hidden, 0},
    {"xe", A::Skip, 0},
    {"zwbo", A::Character, 0x200B},
    {"zwj", A::Character, 0x200D},
    {"zwnbo", A::Character, 0x2060},
    {"zwnj", A::Character, 0x200C},
});

constexpr bool Before(const RtfKeyword &keyword, std::string_view word)
{
    return keyword.word < word;
}

static_assert(std::ranges::is_sorted(Keywords, {}, &RtfKeyword::word));
} // namespace

const RtfKeyword *FindRtfKeyword(std::string_view word)
{
    const auto *const found = std::lower_bound(Keywords.begin(), Keywords.end(), word, Before);
    return found != Keywords.end() && found->word == word ? found : nullptr;
}

} // namespace paukfix
