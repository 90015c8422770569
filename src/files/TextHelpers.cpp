// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextHelpers.h"

#include <QStringConverter>

namespace paukfix {

using namespace Qt::StringLiterals;

QVariant NullToEmpty(const QVariant &value)
{
    return value.isNull() ? QVariant(QString()) : value;
}

QString ZeilenumbruchEntfernen(const QString &text)
{
    // Taking a pair out can join a CR and an LF to a new one ("\r\r\n\n"): a result is built in which that is
    // seen.
    QString result;
    result.reserve(text.size());
    for (const QChar c : text)
        if (c == u'\n' && result.endsWith(u'\r'))
            result.chop(1);
        else
            result.append(c);
    return result;
}

QString CleanFieldText(QString &text, const QString &separator)
{
    if (separator.size() == 1)
        text.replace(separator.front(), u' ', Qt::CaseInsensitive);
    else if (!separator.isEmpty())
        text.replace(separator, u" "_s, Qt::CaseInsensitive);
    for (const QChar c : {u'\t', u'\n', u'\r'})
        text.replace(c, u' ');
    return text;
}

QString Trimmed(const QString &text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == u' ')
        ++from;
    while (to > from && text[to - 1] == u' ')
        --to;
    return text.mid(from, to - from);
}

QString TextFromUtf8(QByteArrayView bytes)
{
    if (!bytes.startsWith("\xEF\xBB\xBF")) // which fromUtf8 would take for a mark
        return QString::fromUtf8(bytes);
    return QStringDecoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom)(bytes);
}

QString WithWholeCharacters(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    return text;
}

} // namespace paukfix
