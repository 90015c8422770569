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

const char *UnderlineWord(QTextCharFormat::UnderlineStyle style)
{
    switch (style) {
    case QTextCharFormat::SingleUnderline:
        return "\\ul";
    case QTextCharFormat::DashUnderline:
        return "\\uldash";
    case QTextCharFormat::DotLine:
        return "\\uld";
    case QTextCharFormat::DashDotLine:
        return "\\uldashd";
    case QTextCharFormat::DashDotDotLine:
        return "\\uldashdd";
    case QTextCharFormat::WaveUnderline:
        return "\\ulwave";
    default:
        return "";
    }
}

void AppendCharacter(QByteArray &out, char16_t c)
{
    switch (c) {
    case u'\\':
    case u'{':
    case u'}':
        out += '\\';
        out += static_cast<char>(c);
        break;
    case u'\t':
        out += "\\tab ";
        break;
    case u'\u2028':
        out += "\\line ";
        break;
    case u'\u00A0':
        out += "\\~";
        break;
    case u'\u00AD':
        out += "\\-";
        break;
    case u'\u2011':
        out += "\\_";
        break;
    case u'\uFFFC': // a picture
        break;
    default:
        if (c >= 0x20 && c < 0x7F)
            out += static_cast<char>(c);
        else if (c > 0xA0 && c <= 0xFF) // the same in Windows-1252, and known to the oldest readers
            out += "\\'" + QByteArray::number(c, 16);
        else
            out += "\\u" + QByteArray::number(static_cast<qint16>(c)) + '?';
    }
}

QByteArray AlignmentWord(Qt::Alignment alignment)
{
    if (alignment.testFlag(Qt::AlignHCenter))
        return "\\qc";
    if (alignment.testFlag(Qt::AlignRight))
        return "\\qr";
    if (alignment.testFlag(Qt::AlignJustify))
        return "\\qj";
    return {};
}

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
      tabWidth_(Twips(document.defaultTextOption().tabStopDistance()))
{
}

QByteArray RtfWriter::Write(LastParagraph last)
{
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        WriteParagraphFormat(block);
        WriteText(block);
        if (last == LastParagraph::Ended || block.next().isValid())
            body_ += "\\par\r\n";
    }
    return Header() + body_ + "}\r\n";
}

void RtfWriter::WriteParagraphFormat(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    QByteArray words = "\\pard" + AlignmentWord(format.alignment()) + Length("\\li", format.leftMargin()) +
                       Length("\\ri", format.rightMargin()) + Length("\\fi", format.textIndent()) +
                       Length("\\sb", format.topMargin()) + Length("\\sa", format.bottomMargin());
    RtfParagraphState paragraph;
    paragraph.left = Twips(format.leftMargin());
    paragraph.first = Twips(format.textIndent());
    const bool tabbed = block.text().contains(u'\t');
    for (const QTextOption::Tab &tab : WrittenTabs(format.tabPositions(), paragraph, tabWidth_, tabbed))
        words += TabStop(tab);
    if (words == writtenParagraph_)
        return;
    body_ += words + ' ';
    writtenParagraph_ = words;
}

void RtfWriter::WriteText(const QTextBlock &block)
{
    if (block.length() <= 1) // empty: the format of what will be typed here
        WriteCharFormat(CharState(block.charFormat()));
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const RtfCharState state = CharState(part.fragment().charFormat());
        WriteCharFormat(state);
        if (state.symbol)
            WriteSymbols(state, part.fragment().text());
        else
            WriteCharacters(part.fragment().text());
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

void RtfWriter::WriteCharFormat(const RtfCharState &state)
{
    if (state == written_)
        return;
    written_ = state;
    body_ += "\\plain";
    if (!state.family.isEmpty())
        Control("\\f", FontNumber(state.family, state.symbol));
    if (state.halfPoints > 0)
        Control("\\fs", state.halfPoints);
    if (state.bold)
        body_ += "\\b";
    if (state.italic)
        body_ += "\\i";
    body_ += UnderlineWord(state.underline);
    if (state.strikeOut)
        body_ += "\\strike";
    if (state.colour != 0)
        Control("\\cf", ColourNumber(state.colour));
    if (state.script != QTextCharFormat::AlignNormal)
        body_ += state.script == QTextCharFormat::AlignSuperScript ? "\\super" : "\\sub";
    const int offset = static_cast<int>(std::lround(state.offset / double(TwipsPerHalfPoint)));
    if (offset != 0)
        Control(offset > 0 ? "\\up" : "\\dn", std::abs(offset));
    body_ += ' ';
}

void RtfWriter::WriteCharacters(const QString &text)
{
    for (const QChar c : text)
        AppendCharacter(body_, c.unicode());
}

void RtfWriter::WriteSymbols(const RtfCharState &state, const QString &text)
{
    RtfCharState plain = state; // for what was typed there and the font has not
    plain.symbol = false;
    plain.family.clear();
    const QList<uint> codes = text.toUcs4();
    for (const uint code : codes) {
        if (const unsigned char place = SymbolPlace(state.family, code)) {
            WriteCharFormat(state);
            body_ += "\\'" + QByteArray::number(place, 16);
            continue;
        }
        const bool neutral =
            code == u'\t' || code == u'\u2028' || code == u'\u00A0' || code == u'\u00AD' || code == u'\u2011';
        WriteCharFormat(neutral ? state : plain);
        WriteCharacters(QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1));
    }
}

void RtfWriter::Control(const char *word, int number)
{
    body_ += word + QByteArray::number(number);
}

int RtfWriter::FontNumber(const QString &family, bool symbol)
{
    const QPair<QString, bool> font(family, symbol);
    const auto found = fontNumbers_.constFind(font);
    if (found != fontNumbers_.constEnd())
        return *found;
    const int number = static_cast<int>(fonts_.size());
    fonts_.append(font);
    fontNumbers_.insert(font, number);
    return number;
}

int RtfWriter::ColourNumber(QRgb colour)
{
    const auto found = colourNumbers_.constFind(colour);
    if (found != colourNumbers_.constEnd())
        return *found;
    colours_.append(colour);
    const int number = static_cast<int>(colours_.size()); // number 0 is the automatic colour
    colourNumbers_.insert(colour, number);
    return number;
}

QByteArray RtfWriter::Header() const
{
    QByteArray header = "{\\rtf1\\ansi\\ansicpg1252\\uc1";
    if (tabWidth_ != UsualTabWidth && tabWidth_ > 0)
        header += "\\deftab" + QByteArray::number(tabWidth_);
    if (!fonts_.isEmpty()) {
        header += "{\\fonttbl";
        for (qsizetype i = 0; i < fonts_.size(); ++i) {
            header += "{\\f" + QByteArray::number(i) +
                      (fonts_[i].second ? "\\fnil\\fcharset2 " : "\\fnil\\fcharset0 ");
            QString name = fonts_[i].first;
            name.remove(u';');
            for (const QChar c : std::as_const(name))
                AppendCharacter(header, c.unicode());
            header += ";}";
        }
        header += "}\r\n";
    }
    if (!colours_.isEmpty()) {
        header += "{\\colortbl ;";
        for (const QRgb colour : colours_) {
            header += "\\red" + QByteArray::number(qRed(colour)) + "\\green" +
                      QByteArray::number(qGreen(colour)) + "\\blue" + QByteArray::number(qBlue(colour)) + ';';
        }
        header += "}\r\n";
    }
    return header;
}

} // namespace paukfix
