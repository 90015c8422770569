// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SalvagedCard.h"

#include "TextHelpers.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

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

// Do the braces of an RTF text close, with nothing but white space behind?
bool RtfCloses(QByteArrayView text)
{
    qint64 depth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i; // the next character is no brace of the structure
        else if (text[i] == '{')
            ++depth;
        else if (text[i] == '}' && --depth == 0)
            return std::all_of(text.begin() + i + 1, text.end(),
                               [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
    }
    return false;
}

void AddColumns(SalvagedCard &card, const QStringList &columns, const QString &one, const QString &many)
{
    if (!columns.isEmpty())
        card.remarks.push_back({Remark::Kind::Incomplete,
                                columns.join(QStringLiteral(", ")) + (columns.size() == 1 ? one : many)});
}

} // namespace

QString ColumnText(int column)
{
    QString name = QLatin1String(CardColumns()[static_cast<std::size_t>(column)].name);
    return name.replace(u'_', u' ');
}

void RemarkGaps(SalvagedCard &card, const QStringList &cut, const QStringList &lost)
{
    AddColumns(card, cut, QStringLiteral(" bricht ab"), QStringLiteral(" brechen ab"));
    AddColumns(card, lost, QStringLiteral(" fehlt"), QStringLiteral(" fehlen"));
}

std::optional<int> Whole16(double value)
{
    using Limits = std::numeric_limits<std::int16_t>;
    if (!(value >= Limits::min() && value <= Limits::max()) || value != std::floor(value))
        return std::nullopt;
    return static_cast<int>(value);
}

QString SalvagedCard::Text(int column) const
{
    const auto *text = std::get_if<QByteArray>(&values[static_cast<std::size_t>(column)]);
    return text == nullptr ? QString() : TextFromUtf8(*text);
}

bool SalvagedCard::HasText() const
{
    return std::any_of(values.begin(), values.end(), [](const Value &value) {
        const auto *text = std::get_if<QByteArray>(&value);
        return text != nullptr && !text->isEmpty();
    });
}

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

void CheckContent(SalvagedCard &card)
{
    for (int column = 0; column < CardColumnCount; ++column) {
        auto &value = card.values[static_cast<std::size_t>(column)];
        const auto doubt = [&](const QString &what) {
            card.remarks.push_back({Remark::Kind::Doubtful, ColumnText(column) + what});
        };
        if (const auto *text = std::get_if<QByteArray>(&value)) {
            const bool isShort = QByteArrayView(CardColumns()[static_cast<std::size_t>(column)].declaredType)
                                     .startsWith("TEXT(");
            if (!text->isValidUtf8())
                doubt(QStringLiteral(" enthält unlesbare Zeichen"));
            // Some writers end an RTF text with a zero; anywhere else a zero stands for something lost.
            const bool isRtf = text->startsWith("{\\rtf");
            const QByteArrayView body =
                isRtf && text->endsWith('\0') ? QByteArrayView(*text).chopped(1) : *text;
            if (body.contains('\0'))
                doubt(QStringLiteral(" enthält Nullzeichen"));
            if (isRtf && !RtfCloses(body))
                doubt(QStringLiteral(" ist kein geschlossener RTF-Text"));
            if (isShort && text->size() > MaxTextLength && QString::fromUtf8(*text).size() > MaxTextLength)
                doubt(QStringLiteral(" ist länger als %1 Zeichen").arg(MaxTextLength));
        } else if (auto *number = std::get_if<double>(&value)) {
            // Rounding decides what fits into 16 bits, not wholeness: the program rounds.
            if (!IsTextColumn(column) && !Whole16(std::nearbyint(*number))) {
                doubt(QStringLiteral(" hatte den unbrauchbaren Wert %1 und steht jetzt auf 0").arg(*number));
                *number = 0;
            }
        }
    }
}

TextEncoding FindEncoding(const CardSurvey &survey)
{
    constexpr std::size_t sample = 64;
    std::uint64_t characters = 0, evenZeros = 0, oddZeros = 0;
    std::size_t seen = 0;
    for (const CardCell &cell : survey.Cards()) {
        if (!cell.whole)
            continue;
        if (++seen > sample)
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
