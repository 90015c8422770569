// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QVariant>

namespace paukfix {

// A database null becomes the empty string; any other value is returned unchanged.
QVariant NullToEmpty(const QVariant &value);

// Removes every CR LF pair, again and again until none is left; a lone CR or LF stays.
QString ZeilenumbruchEntfernen(const QString &text);

// Replaces every occurrence of `separator` (if not empty, letter case ignored), then every TAB, LF and CR by
// one blank each. Changes `text` and returns it.
QString CleanFieldText(QString &text, const QString &separator);

// Removes blanks (code 32, nothing else) at both ends.
QString Trimmed(const QString &text);

// The text of UTF-8 bytes. Bytes that are none become U+FFFD; a U+FEFF at the start stays.
QString TextFromUtf8(QByteArrayView bytes);

// Halves of surrogate pairs that stand alone are no characters: they become U+FFFD.
QString WithWholeCharacters(QString text);

} // namespace paukfix
