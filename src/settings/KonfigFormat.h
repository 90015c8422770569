// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace paukfix {

// The lines and values of "konfig.dat": Windows-1252, lines ended by CR LF. Files that other editors have
// touched are read as well: LF or CR alone ends a line too, and the last line needs no end.

struct KonfigLine
{
    QByteArrayView text;  // without its end
    QByteArrayView whole; // with its end
};

// The lines of `content`, which must outlive them.
std::vector<KonfigLine> KonfigLines(QByteArrayView content);

bool IsComment(QByteArrayView line);
bool IsHeader(QByteArrayView line);
bool SameLetters(QByteArrayView line, QByteArrayView text,
                 Qt::CaseSensitivity letterCase = Qt::CaseInsensitive);
// What stands behind `key` ("Animation=") when the line begins with it.
std::optional<QByteArrayView> ValueBehind(QByteArrayView line, QByteArrayView key,
                                          Qt::CaseSensitivity letterCase = Qt::CaseInsensitive);

// A file name as one line of the recent files. A name that could not stand there as it is (a character
// outside the code page, a line break, a first letter that makes a comment or a header of it) is written as a
// file URL, which no reader of the file takes for the name of another file. NameFromLine gives back exactly
// the name. LineFromName throws StoreError 13 for what is no Unicode text.
QByteArray LineFromName(const QString &name);
QString NameFromLine(QByteArrayView line);

// A text that stands behind a key. Throws StoreError 13 for what does not fit on one line of the code page.
QByteArray LineFromText(const QString &text);

// Values behind keys; throw StoreError 13 where the text is no such value and 6 where it is out of range.
QString TextValue(QByteArrayView value);
QString NameValue(QByteArrayView line); // NameFromLine, if it can be a path at all
bool BoolValue(QByteArrayView value);
float SizeValue(QByteArrayView value);   // the decimal sign may be a comma or a point, 1 to 1638 points
qint32 ColorValue(QByteArrayView value); // decimal
// "120;80"; nothing where the text is not two whole numbers that a place or size on a screen can have.
std::optional<std::pair<int, int>> PairValue(QByteArrayView value);

QByteArray BoolText(bool value);  // "True" or "False"
QByteArray SizeText(float value); // with the decimal sign of the user's locale
QByteArray PairText(int first, int second);

} // namespace paukfix
