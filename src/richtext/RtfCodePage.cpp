// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfCodePage.h"

namespace paukfix {

namespace {
constexpr int Utf8CodePage = 65001;
constexpr int ShiftJisCodePage = 932;

bool IsMultiByte(int codePage)
{
    switch (codePage) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 1361:
    case Utf8CodePage:
        return true;
    default:
        return false;
    }
}

QByteArray DecoderName(int codePage)
{
    switch (codePage) {
    case 437:
    case 850:
    case 852:
    case 857:
    case 860:
    case 862:
    case 863:
    case 864:
    case 865:
    case 866:
        return "ibm-" + QByteArray::number(codePage);
    case MacCodePage:
        return "macintosh";
    case Utf8CodePage:
        return "UTF-8";
    default:
        return "windows-" + QByteArray::number(codePage);
    }
}
} // namespace

int CodePageOfCharset(int charset, int fallback)
{
    switch (charset) {
    case 0:
        return WesternCodePage;
    case 2:
        return SymbolCodePage;
    case 77:
        return MacCodePage;
    case 128:
        return 932;
    case 129:
        return 949;
    case 130:
        return 1361;
    case 134:
        return 936;
    case 136:
        return 950;
    case 161:
        return 1253;
    case 162:
        return 1254;
    case 163:
        return 1258;
    case 177:
        return 1255;
    case 178:
        return 1256;
    case 186:
        return 1257;
    case 204:
        return 1251;
    case 222:
        return 874;
    case 238:
        return 1250;
    case 254:
        return 437;
    case 255:
        return 850;
    default:
        return fallback;
    }
}

RtfCodePage::RtfCodePage(int codePage)
    : decoder_(DecoderName(codePage).constData()),
      codePage_(codePage),
      multiByte_(decoder_.isValid() && IsMultiByte(codePage))
{
    if (multiByte_)
        return;
    if (!decoder_.isValid())
        decoder_ = QStringDecoder(DecoderName(WesternCodePage).constData());
    for (std::size_t i = 0; i < single_.size(); ++i) {
        const char byte = static_cast<char>(i);
        const QString text = Decode(QByteArray(1, byte));
        // A byte that the page leaves open reads as in Latin-1: 0x80 to 0x9F are control characters there.
        const bool defined = text.size() == 1 && text.front() != QChar::ReplacementCharacter;
        single_[i] = defined ? text.front().unicode() : static_cast<char16_t>(i);
    }
}

bool RtfCodePage::IsLead(unsigned char byte) const
{
    if (!multiByte_ || codePage_ == Utf8CodePage)
        return false;
    if (codePage_ == ShiftJisCodePage) // has letters of one byte in between
        return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    return byte >= 0x81 && byte <= 0xFE;
}

QString RtfCodePage::Decode(const QByteArray &bytes)
{
    decoder_.resetState();
    return decoder_(bytes);
}

} // namespace paukfix
