// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// The names beside a card file of the former database engine that a conversion gives: to the old file, and to
// the report where there is something to tell.
struct JetNames
{
    QString oldFile;
    QString report;
};

JetNames ConversionNames(const QString &path);

// Throws StoreError 53, 76 or 3051 where the file at `path` cannot be read, 3031, 3343, 3078, 3265, 13 or
// 3049 where its cards cannot be taken over.
void CheckConvertible(const QString &path);

// Writes the cards of the file at `path` into a card file of today's format, which takes its place in one
// step; the old file stays beside it. Keys and numbers that no card can have are mended as a repair does it,
// and damaged pages cost only the cards on them: the path of the report that names them, empty where every
// card is as it was. Nothing happens to a file that another program has converted meanwhile.
//
// Throws StoreError as CheckConvertible does and where the new file cannot be written; the old file is then
// untouched. A kill at any moment leaves the old file under its old name, or the new one there with the old
// one beside it.
QString ConvertJetFile(const QString &path);

} // namespace paukfix
