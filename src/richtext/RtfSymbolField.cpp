// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfSymbolField.h"

#include <QRegularExpression>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {
constexpr uint LastCodePoint = 0x10FFFF;
constexpr uint FirstCharacter = 0x20;
constexpr double MaxPoints = 1'638;
} // namespace

std::optional<RtfSymbolField> ReadSymbolField(const QString &instruction)
{
    static const QRegularExpression whole(u"^\\s*SYMBOL\\s+(0x[0-9a-f]+|[0-9]+)(?=\\s|$)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression font(u"\\\\f\\s+(?:\"([^\"]*)\"|([^\\s\\\\]+))"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression size(u"\\\\s\\s+\"?([0-9]+(?:\\.[0-9])?)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression unicode(u"\\\\u(?=\\s|$)"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression otherCodes(u"\\\\j(?=\\s|$)"_s,
                                               QRegularExpression::CaseInsensitiveOption);
    const auto start = whole.match(instruction);
    if (!start.hasMatch() || otherCodes.match(instruction).hasMatch())
        return std::nullopt;
    bool valid = false;
    const QString number = start.captured(1);
    const bool hex = number.startsWith(u"0x", Qt::CaseInsensitive);
    const uint code = number.toUInt(&valid, hex ? 16 : 10);
    if (!valid || code < FirstCharacter || code > LastCodePoint || QChar::isSurrogate(code))
        return std::nullopt;
    RtfSymbolField field{.code = code, .family = {}};
    const auto family = font.match(instruction);
    field.family = family.captured(1).isEmpty() ? family.captured(2) : family.captured(1);
    const double points = size.match(instruction).captured(1).toDouble();
    if (points > 0 && points <= MaxPoints)
        field.halfPoints = static_cast<int>(points * 2);
    field.unicode = unicode.match(instruction).hasMatch();
    return field;
}

} // namespace paukfix
