// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <array>

namespace paukfix {

inline constexpr int WesternCodePage = 1252;
inline constexpr int MacCodePage = 10000;
inline constexpr int SymbolCodePage = 42; // of fonts that have pictures at the places of letters

// The code page of a font's \fcharset, or `fallback` where the character set names none.
int CodePageOfCharset(int charset, int fallback);

// Decodes the bytes of one code page. A page that is not known reads as Windows-1252.
class RtfCodePage
{
public:
    explicit RtfCodePage(int codePage);

    // True when a character may need more than one byte.
    bool isMultiByte() const { return multiByte_; }

    // Whether another byte must follow in a page that needs one or two for each character.
    bool IsLead(unsigned char byte) const;

    // Of a page with one byte for each character.
    char16_t Decode(unsigned char byte) const { return single_[byte]; }

    // Bytes that make no character become U+FFFD; an unfinished character at the end is dropped.
    QString Decode(const QByteArray &bytes);

private:
    QStringDecoder decoder_;
    int codePage_;
    bool multiByte_ = false;
    std::array<char16_t, 256> single_{};
};

} // namespace paukfix
