// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SalvagedCard.h"

#include "CardValue.h"
#include "TextHelpers.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

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
        card.remarks.push_back(
            {Remark::Kind::Incomplete, columns.join(u", "_s) + (columns.size() == 1 ? one : many)});
}

} // namespace

QString ColumnText(int column)
{
    QString name = QLatin1String(CardColumns()[static_cast<std::size_t>(column)].name);
    return name.replace(u'_', u' ');
}

void RemarkGaps(SalvagedCard &card, const QStringList &cut, const QStringList &lost)
{
    AddColumns(card, cut, u" bricht ab"_s, u" brechen ab"_s);
    AddColumns(card, lost, u" fehlt"_s, u" fehlen"_s);
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

void CheckContent(SalvagedCard &card)
{
    for (int column = 0; column < CardColumnCount; ++column) {
        auto &value = card.values[static_cast<std::size_t>(column)];
        const auto doubt = [&](const QString &what) {
            card.remarks.push_back({Remark::Kind::Doubtful, ColumnText(column) + what});
        };
        if (const auto *text = std::get_if<QByteArray>(&value)) {
            if (!text->isValidUtf8())
                doubt(u" enthält unlesbare Zeichen"_s);
            // Some writers end an RTF text with a zero; anywhere else a zero stands for something lost.
            const bool isRtf = text->startsWith("{\\rtf");
            const QByteArrayView body =
                isRtf && text->endsWith('\0') ? QByteArrayView(*text).chopped(1) : *text;
            if (body.contains('\0'))
                doubt(u" enthält Nullzeichen"_s);
            if (isRtf && !RtfCloses(body))
                doubt(u" ist kein geschlossener RTF-Text"_s);
            if (IsShortText(column) && text->size() > MaxTextLength &&
                QString::fromUtf8(*text).size() > MaxTextLength)
                doubt(u" ist länger als %1 Zeichen"_s.arg(MaxTextLength));
        } else if (auto *number = std::get_if<double>(&value)) {
            // Rounding decides what fits into 16 bits, not wholeness: the program rounds.
            if (KindOf(column) != CardKind::Text && !Whole16(std::nearbyint(*number))) {
                doubt(u" hatte den unbrauchbaren Wert %1 und steht jetzt auf 0"_s.arg(*number));
                *number = 0;
            }
        }
    }
}

} // namespace paukfix
