// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace paukfix {

// What is told of a saved card in the report.
struct Remark
{
    enum class Kind : std::uint8_t
    {
        Incomplete, // a part of the card could not be read
        Doubtful,   // kept as it was read, but it does not look right
        Changed,    // a key was unusable and got another value
        Uncertain   // nothing tells whether the card stood so in the file at last
    };
    Kind kind;
    QString text; // German, without a full stop
};

// The values of one card as they were read: null, number, or text in UTF-8.
struct SalvagedCard
{
    using Value = std::variant<std::monostate, double, QByteArray>;

    std::array<Value, CardColumnCount> values;
    std::vector<Remark> remarks;

    // A text's column number must be one of a text column.
    QString Text(int column) const;
    // Is there anything in the card that a learner could see?
    bool HasText() const;
};

// Adds remarks on content that does not look right, and sets numbers to 0 that the program could not read.
void CheckContent(SalvagedCard &card);
// A column's name as a reader of the report knows it.
QString ColumnText(int column);
// Remarks the columns whose texts break off and those whose value could not be read.
void RemarkGaps(SalvagedCard &card, const QStringList &cut, const QStringList &lost);
// The value as a 16-bit whole number; nothing for anything else.
std::optional<int> Whole16(double value);

} // namespace paukfix
