// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QVariant>
#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

#include <string>

namespace paukfix {

// One value of a card between the engine, the edit buffer and the program. Columns are numbered as in
// CardColumns(); null is an invalid QVariant, numbers are double, ticks bool, everything else QString.

// The key columns; the table begins with them.
inline constexpr int ColFrageNr = 0;
inline constexpr int ColFachNr = 1;
inline constexpr int ColFachLfdNr = 2;

enum class CardKind
{
    Number,
    Text,
    Flag
};
CardKind KindOf(int column);
// Is it a text column that takes at most MaxTextLength characters?
bool IsShortText(int column);
std::string QuotedColumn(int column);

// What the engine delivers. Throws StoreError 13 where the file holds another type.
QVariant FromEngine(const SQLite::Column &value, int column);
// The same for a key, which is a number; 94 for null.
double KeyValue(const SQLite::Column &value, int column);
// What the program assigns. Throws StoreError 13 for a value of another type.
QVariant ForBuffer(const QVariant &value, int column);
// The card format's own rules, which the engine does not know: throws StoreError 94 for null in a key, 6 for
// a number outside 16 bits, 3163 for a text over 250 characters in a short text column.
void CheckWritable(const QVariant &value, int column);
void Bind(SQLite::Statement &statement, int parameter, const QVariant &value);
void BindFlag(SQLite::Statement &statement, int parameter, bool flag);

[[noreturn]] void ThrowTypeMismatch(int column);
[[noreturn]] void ThrowNullValue(int column);

} // namespace paukfix
