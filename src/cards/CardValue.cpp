// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardValue.h"

#include "CardRecord.h"
#include "StoreError.h"
#include "TextHelpers.h"

#include <cstdint>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

static const CardColumn &At(int column)
{
    return CardColumns()[static_cast<std::size_t>(column)];
}

CardKind KindOf(int column)
{
    return static_cast<CardKind>(At(column).member.index());
}

bool IsShortText(int column)
{
    return QLatin1String(At(column).declaredType) == "TEXT(250)"_L1;
}

std::string QuotedColumn(int column)
{
    return '"' + std::string(At(column).name) + '"';
}

// What users know a field as: the topic lives in a column of another name.
static QString ShownName(int column)
{
    const QLatin1String name(At(column).name);
    return name == "Picture_9_Name"_L1 ? u"Thema"_s : QString(name);
}

void ThrowTypeMismatch(int column)
{
    throw StoreError(Fehler::TypUnvertraeglich,
                     u"Typen unverträglich im Feld „%1“."_s.arg(ShownName(column)));
}

void ThrowNullValue(int column)
{
    throw StoreError(Fehler::NullUngueltig,
                     u"Das Feld „%1“ ist leer, braucht aber einen Wert."_s.arg(ShownName(column)));
}

QVariant FromEngine(const SQLite::Column &value, int column)
{
    const int type = value.getType(); // asked once: every call to the engine counts in a walk
    if (type == SQLite::Null)
        return {};
    const bool number = type == SQLite::INTEGER || type == SQLite::FLOAT;
    switch (KindOf(column)) {
    case CardKind::Number:
        if (!number)
            ThrowTypeMismatch(column);
        return value.getDouble();
    case CardKind::Flag:
        if (!number)
            ThrowTypeMismatch(column);
        return value.getDouble() != 0.0;
    case CardKind::Text:
        break;
    }
    const char *text = value.getText(); // before getBytes(): it converts numbers
    return TextFromUtf8({text, value.getBytes()});
}

double KeyValue(const SQLite::Column &value, int column)
{
    const QVariant key = FromEngine(value, column);
    if (!key.isValid())
        ThrowNullValue(column);
    return key.toDouble();
}

QVariant ForBuffer(const QVariant &value, int column)
{
    const CardKind kind = KindOf(column);
    if (!value.isValid())
        return kind == CardKind::Flag ? QVariant(false) : QVariant();
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray: // UTF-8, as it is
        if (kind == CardKind::Text)
            return value;
        break;
    case QMetaType::Bool:
        if (kind == CardKind::Flag)
            return value;
        break;
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Float:
    case QMetaType::Double:
        if (kind == CardKind::Number)
            return value.toDouble();
        if (kind == CardKind::Flag)
            return value.toDouble() != 0.0;
        break;
    default:
        break;
    }
    ThrowTypeMismatch(column);
}

void CheckWritable(const QVariant &value, int column)
{
    if (!value.isValid()) {
        if (column <= ColFachLfdNr)
            ThrowNullValue(column);
        return;
    }
    if (KindOf(column) == CardKind::Number) {
        const double number = value.toDouble();
        if (!(number >= std::numeric_limits<qint16>::min() && number <= std::numeric_limits<qint16>::max()))
            throw StoreError(
                Fehler::Ueberlauf,
                u"Überlauf im Feld „%1“: Es fasst Zahlen von -32768 bis 32767."_s.arg(ShownName(column)));
    } else if (KindOf(column) == CardKind::Text) {
        if (IsShortText(column) && value.toString().size() > MaxTextLength)
            throw StoreError(Fehler::TextZuLang,
                             u"Der Text im Feld „%1“ ist länger als %2 Zeichen."_s.arg(ShownName(column))
                                 .arg(MaxTextLength));
    }
}

void Bind(SQLite::Statement &statement, int parameter, const QVariant &value)
{
    if (!value.isValid())
        statement.bind(parameter);
    else if (value.typeId() == QMetaType::Bool)
        BindFlag(statement, parameter, value.toBool());
    else if (value.typeId() == QMetaType::QString)
        statement.bind(parameter, WithWholeCharacters(value.toString()).toStdString());
    else if (value.typeId() == QMetaType::QByteArray)
        statement.bind(parameter, value.toByteArray().toStdString());
    else if (value.typeId() == QMetaType::LongLong)
        statement.bind(parameter, static_cast<std::int64_t>(value.toLongLong()));
    else
        statement.bind(parameter, value.toDouble());
}

void BindFlag(SQLite::Statement &statement, int parameter, bool flag)
{
    statement.bind(parameter, flag ? -1 : 0); // card files write true as -1
}

} // namespace paukfix
