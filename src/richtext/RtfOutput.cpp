// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfOutput.h"

#include "RtfTabs.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

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

// Stands for itself in RTF.
bool IsPlain(QChar c)
{
    return c >= u' ' && c < u'\x7F' && c != u'\\' && c != u'{' && c != u'}';
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
        if (IsPlain(c))
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

} // namespace

RtfOutput::RtfOutput(int tabWidth) : tabWidth_(tabWidth) {}

void RtfOutput::BeginParagraph(Qt::Alignment alignment, const QByteArray &rest)
{
    const QByteArray words = "\\pard" + AlignmentWord(alignment) + rest;
    if (words == writtenParagraph_)
        return;
    body_ += words + ' ';
    writtenParagraph_ = words;
}

void RtfOutput::EndParagraph()
{
    body_ += "\\par\r\n";
}

void RtfOutput::Format(const RtfCharState &state)
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

void RtfOutput::Characters(QStringView text)
{
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = at;
        while (end < text.size() && IsPlain(text[end]))
            ++end;
        if (end > at) {
            const qsizetype before = body_.size();
            body_.resize(before + end - at);
            std::transform(text.begin() + at, text.begin() + end, body_.begin() + before,
                           [](QChar c) { return static_cast<char>(c.unicode()); });
        } else {
            AppendCharacter(body_, text[end++].unicode());
        }
        at = end;
    }
}

void RtfOutput::Symbol(unsigned char place)
{
    body_ += "\\'" + QByteArray::number(place, 16);
}

QByteArray RtfOutput::Whole() const
{
    return Header() + body_ + "}\r\n";
}

void RtfOutput::Control(const char *word, int number)
{
    body_ += word + QByteArray::number(number);
}

int RtfOutput::FontNumber(const QString &family, bool symbol)
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

int RtfOutput::ColourNumber(QRgb colour)
{
    const auto found = colourNumbers_.constFind(colour);
    if (found != colourNumbers_.constEnd())
        return *found;
    colours_.append(colour);
    const int number = static_cast<int>(colours_.size()); // number 0 is the automatic colour
    colourNumbers_.insert(colour, number);
    return number;
}

QByteArray RtfOutput::Header() const
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
