// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfWriter.h"

#include "CharFormat.h"
#include "RtfTabs.h"
#include "SymbolFont.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {
constexpr double PixelsPerHalfPoint = 96.0 / 144.0;

QByteArray Length(const char *word, double pixels)
{
    const int twips = Twips(pixels);
    return twips == 0 ? QByteArray() : word + QByteArray::number(twips);
}

QByteArray TabStop(const QTextOption::Tab &tab)
{
    QByteArray kind;
    if (tab.type == QTextOption::RightTab)
        kind = "\\tqr";
    else if (tab.type == QTextOption::CenterTab)
        kind = "\\tqc";
    else if (tab.type == QTextOption::DelimiterTab)
        kind = "\\tqdec";
    return kind + "\\tx" + QByteArray::number(Twips(tab.position));
}
} // namespace

RtfWriter::RtfWriter(const QTextDocument &document)
    : document_(document),
      defaultFont_(document.defaultFont()),
      tabWidth_(Twips(document.defaultTextOption().tabStopDistance())),
      out_(tabWidth_)
{
}

QByteArray RtfWriter::Write(LastParagraph last)
{
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        WriteParagraphFormat(block);
        WriteText(block);
        if (last == LastParagraph::Ended || block.next().isValid())
            out_.EndParagraph();
    }
    return out_.Whole();
}

void RtfWriter::WriteParagraphFormat(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    QByteArray words = Length("\\li", format.leftMargin()) + Length("\\ri", format.rightMargin()) +
                       Length("\\fi", format.textIndent()) + Length("\\sb", format.topMargin()) +
                       Length("\\sa", format.bottomMargin());
    RtfParagraphState paragraph;
    paragraph.left = Twips(format.leftMargin());
    paragraph.first = Twips(format.textIndent());
    const bool tabbed = block.text().contains(u'\t');
    for (const QTextOption::Tab &tab : WrittenTabs(format.tabPositions(), paragraph, tabWidth_, tabbed))
        words += TabStop(tab);
    out_.BeginParagraph(format.alignment(), words);
}

void RtfWriter::WriteText(const QTextBlock &block)
{
    if (block.length() <= 1) // empty: the format of what will be typed here
        out_.Format(CharState(block.charFormat()));
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const RtfCharState state = CharState(part.fragment().charFormat());
        out_.Format(state);
        if (state.symbol)
            WriteSymbols(state, part.fragment().text());
        else
            out_.Characters(part.fragment().text());
    }
}

RtfCharState RtfWriter::CharState(const QTextCharFormat &format) const
{
    const auto fromDefault = [this](uint property) { return (defaultFont_.resolveMask() & property) != 0; };
    RtfCharState state;
    const QStringList families = format.fontFamilies().toStringList();
    const QString symbolFont = format.stringProperty(SymbolFontProperty);
    state.symbol = !symbolFont.isEmpty() && (families.isEmpty() || families.front() == symbolFont);
    if (state.symbol)
        state.family = symbolFont;
    else if (!families.isEmpty())
        state.family = families.front();
    else if (fromDefault(QFont::FamiliesResolved))
        state.family = defaultFont_.family();

    double halfPoints = 2.0 * format.fontPointSize();
    if (format.hasProperty(QTextFormat::FontPixelSize))
        halfPoints = format.intProperty(QTextFormat::FontPixelSize) / PixelsPerHalfPoint;
    if (halfPoints <= 0 && fromDefault(QFont::SizeResolved))
        halfPoints = 2.0 * defaultFont_.pointSizeF();
    state.halfPoints = static_cast<int>(std::lround(std::max(0.0, halfPoints)));

    state.bold = format.hasProperty(QTextFormat::FontWeight) ? format.fontWeight() >= QFont::DemiBold
                                                             : defaultFont_.bold();
    state.italic = format.hasProperty(QTextFormat::FontItalic) ? format.fontItalic() : defaultFont_.italic();
    state.strikeOut =
        format.hasProperty(QTextFormat::FontStrikeOut) ? format.fontStrikeOut() : defaultFont_.strikeOut();
    if (format.underlineStyle() != QTextCharFormat::SpellCheckUnderline)
        state.underline = format.underlineStyle();
    if (!format.hasProperty(QTextFormat::TextUnderlineStyle) && defaultFont_.underline())
        state.underline = QTextCharFormat::SingleUnderline;
    const QColor colour = TextColour(format);
    state.colour = colour.isValid() ? colour.rgb() & RGB_MASK : 0;
    if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript ||
        format.verticalAlignment() == QTextCharFormat::AlignSubScript)
        state.script = format.verticalAlignment();
    else
        state.offset = CharOffset(format);
    return state;
}

void RtfWriter::WriteSymbols(const RtfCharState &state, const QString &text)
{
    RtfCharState plain = state; // for what was typed there and the font has not
    plain.symbol = false;
    plain.family.clear();
    const QList<uint> codes = text.toUcs4();
    for (const uint code : codes) {
        if (const unsigned char place = SymbolPlace(state.family, code)) {
            out_.Format(state);
            out_.Symbol(place);
            continue;
        }
        const bool neutral =
            code == u'\t' || code == u'\u2028' || code == u'\u00A0' || code == u'\u00AD' || code == u'\u2011';
        out_.Format(neutral ? state : plain);
        out_.Characters(QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1));
    }
}

} // namespace paukfix
