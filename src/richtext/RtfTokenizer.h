// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QStringView>

#include <array>
#include <cstddef>
#include <string_view>

namespace paukfix {

// Cuts RTF into tokens, one at a time, in one pass and without allocating. Anything is RTF to it: what is no
// control, no brace and no line break is text.
class RtfTokenizer
{
public:
    enum class Kind
    {
        End,
        GroupStart,
        GroupEnd,
        Word,   // word(), hasParameter(), parameter()
        Symbol, // symbol(): a backslash and one character that is no letter
        Byte,   // byte(): \'xx
        Text    // text(): never empty; without line breaks and NUL
    };

    explicit RtfTokenizer(QStringView rtf) : rtf_(rtf) {}

    Kind Next();

    // Cut off behind the longest word that means something.
    std::string_view word() const { return {word_.data(), wordLength_}; }

    bool hasParameter() const { return hasParameter_; }

    int parameter() const { return parameter_; } // 0 without one; kept within the int's range

    char16_t symbol() const { return symbol_; }

    unsigned char byte() const { return byte_; }

    QStringView text() const { return text_; }

private:
    Kind Control();
    Kind ControlWord();
    Kind HexByte();
    Kind Text();
    char16_t At(qsizetype position) const;

    QStringView rtf_;
    qsizetype position_ = 0;
    std::array<char, 32> word_{};
    std::size_t wordLength_ = 0;
    bool hasParameter_ = false;
    int parameter_ = 0;
    char16_t symbol_ = 0;
    unsigned char byte_ = 0;
    QStringView text_;
};

} // namespace paukfix
