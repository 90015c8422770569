// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardText.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>

namespace paukfix {

namespace {

// Takes off the start of a character whose other bytes are missing.
void CutIncompleteCharacter(QByteArray &text)
{
    for (qsizetype tail = 1; tail <= std::min<qsizetype>(3, text.size()); ++tail) {
        const auto byte = static_cast<std::uint8_t>(text[text.size() - tail]);
        if ((byte & 0xC0U) == 0x80U)
            continue; // a further byte of a character
        const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        if (length > tail)
            text.chop(tail);
        return;
    }
}

QByteArray TextInUtf8(Bytes bytes, TextEncoding encoding)
{
    const QByteArrayView raw(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (encoding == TextEncoding::Utf8)
        return raw.toByteArray();
    QStringDecoder decoder(encoding == TextEncoding::Utf16LittleEndian ? QStringDecoder::Utf16LE
                                                                       : QStringDecoder::Utf16BE);
    const QString text = decoder(raw);
    return text.toUtf8();
}

} // namespace

SalvagedCard DecodeCard(const CardBytes &record, TextEncoding encoding)
{
    SalvagedCard card;
    QStringList cut, lost;
    for (int column = 0; column < CardColumnCount; ++column) {
        const auto i = static_cast<std::size_t>(column);
        const std::uint64_t type = record.shape.types[i];
        const std::uint64_t have = record.bytes.size();
        const std::uint64_t from = std::min(record.shape.offsets[i], have);
        const std::uint64_t size = SerialSize(type);
        const std::uint64_t left = std::min(size, have - from);
        const Bytes value = Bytes(record.bytes).subspan(from, left);
        if (IsTextType(type)) {
            QByteArray text = TextInUtf8(value, encoding);
            if (left < size)
                CutIncompleteCharacter(text);
            if (left < size)
                (text.isEmpty() ? lost : cut) << ColumnText(column);
            if (left == size || !text.isEmpty())
                card.values[i] = text;
        } else if (const auto number = RecordNumber(type, value)) {
            card.values[i] = *number;
        } else if (left < size) {
            lost << ColumnText(column);
        }
    }
    RemarkGaps(card, cut, lost);
    return card;
}

TextEncoding FindEncoding(const CardSurvey &survey)
{
    constexpr std::size_t Sample = 64;
    std::uint64_t characters = 0, evenZeros = 0, oddZeros = 0;
    std::size_t seen = 0;
    for (const CardCell &cell : survey.Cards()) {
        if (!cell.whole)
            continue;
        if (++seen > Sample)
            break;
        const CardBytes record = survey.Read(cell);
        for (std::size_t i = 0; i < record.shape.types.size(); ++i) {
            const std::uint64_t size = SerialSize(record.shape.types[i]);
            if (!IsTextType(record.shape.types[i]) || record.shape.offsets[i] + size > record.bytes.size())
                continue;
            const Bytes text = Bytes(record.bytes).subspan(record.shape.offsets[i], size);
            characters += size / 2;
            for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
                evenZeros += text[at] == 0 ? 1 : 0;
                oddZeros += text[at + 1] == 0 ? 1 : 0;
            }
        }
    }
    // In UTF-16 most letters of our languages have a zero byte; in UTF-8 no letter has one.
    if (oddZeros * 2 > characters)
        return TextEncoding::Utf16LittleEndian;
    if (evenZeros * 2 > characters)
        return TextEncoding::Utf16BigEndian;
    return TextEncoding::Utf8;
}

} // namespace paukfix
