// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfTokenizer.h"

#include <algorithm>
#include <limits>

namespace paukfix {

namespace {
bool IsLetter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

int HexValue(char16_t c)
{
    if (IsDigit(c))
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

// Characters that end a run of text; NUL and line breaks are dropped between two runs.
bool EndsText(char16_t c)
{
    return c == u'\\' || c == u'{' || c == u'}' || c == u'\r' || c == u'\n' || c == u'\0';
}
} // namespace

char16_t RtfTokenizer::At(qsizetype position) const
{
    return position < rtf_.size() ? rtf_[position].unicode() : u'\0';
}

RtfTokenizer::Kind RtfTokenizer::Next()
{
    while (position_ < rtf_.size()) {
        switch (At(position_)) {
        case u'{':
            ++position_;
            return Kind::GroupStart;
        case u'}':
            ++position_;
            return Kind::GroupEnd;
        case u'\\':
            return Control();
        case u'\r':
        case u'\n':
        case u'\0':
            ++position_;
            break;
        default:
            return Text();
        }
    }
    return Kind::End;
}

RtfTokenizer::Kind RtfTokenizer::Text()
{
    const qsizetype start = position_;
    while (position_ < rtf_.size() && !EndsText(rtf_[position_].unicode()))
        ++position_;
    text_ = rtf_.mid(start, position_ - start);
    return Kind::Text;
}

RtfTokenizer::Kind RtfTokenizer::Control()
{
    ++position_; // the backslash
    if (position_ >= rtf_.size())
        return Kind::End;
    if (IsLetter(At(position_)))
        return ControlWord();
    symbol_ = At(position_++);
    if (symbol_ == u'\'')
        return HexByte();
    if (symbol_ == u'\r' && At(position_) == u'\n')
        ++position_;
    return Kind::Symbol;
}

RtfTokenizer::Kind RtfTokenizer::HexByte()
{
    const int high = HexValue(At(position_));
    const int low = HexValue(At(position_ + 1));
    if (high < 0 || low < 0)
        return Kind::Symbol; // \' without its two digits: an unknown symbol
    position_ += 2;
    byte_ = static_cast<unsigned char>(high * 16 + low);
    return Kind::Byte;
}

RtfTokenizer::Kind RtfTokenizer::ControlWord()
{
    wordLength_ = 0;
    for (; IsLetter(At(position_)); ++position_)
        if (wordLength_ < word_.size())
            word_[wordLength_++] = static_cast<char>(At(position_));
    const bool negative = At(position_) == u'-' && IsDigit(At(position_ + 1));
    if (negative)
        ++position_;
    hasParameter_ = IsDigit(At(position_));
    qint64 value = 0;
    for (; IsDigit(At(position_)); ++position_)
        value = std::min<qint64>(value * 10 + (At(position_) - u'0'), std::numeric_limits<int>::max());
    parameter_ = static_cast<int>(negative ? -value : value);
    if (At(position_) == u' ')
        ++position_;
    if (word() == "bin") // so many characters of raw data, whatever they look like
        position_ += std::clamp<qsizetype>(parameter_, 0, rtf_.size() - position_);
    return Kind::Word;
}

} // namespace paukfix
