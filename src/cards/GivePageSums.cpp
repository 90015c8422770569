// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "GivePageSums.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "CardSchema.h"
#include "EngineLocks.h"
#include "FileHandle.h"
#include "FreshFile.h"
#include "JournalFile.h"
#include "StoreError.h"

#include <QFile>
#include <SQLiteCpp/Statement.h>

#include <fcntl.h>

namespace paukfix {

namespace {

// Our lock keeps every other program out of the old file: the engine needs none of its own.
void Attach(SQLite::Database &database, const QString &path)
{
    SQLite::Statement attach(database, "ATTACH ?1 AS alt");
    attach.bind(1, "file:" + QFile::encodeName(path).toPercentEncoding("/").toStdString() +
                       "?mode=ro&immutable=1");
    attach.exec();
}

void CopyCards(const QString &from, const QString &to)
{
    CardFile::Create(to);
    CardFile file(to);
    SQLite::Database &database = file.Database();
    try {
        Attach(database, from);
        CardFile::WriteUnsynced(database);
        database.exec("BEGIN;"
                      "INSERT INTO main.Lernkarten SELECT * FROM alt.Lernkarten ORDER BY _rowid_; COMMIT");
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, to);
    }
}

// Opened anew, as what the engine has just written it still knows by heart.
void CheckCopy(const QString &from, const QString &to, const Progress &progress)
{
    CardFile file(to);
    CheckCardFile(file.Database(), progress);
    try {
        Attach(file.Database(), from);
        // Of one order, as the rows were written in theirs; values are the same where bytes and types are.
        SQLite::Statement old(file.Database(), "SELECT * FROM alt.Lernkarten NOT INDEXED ORDER BY _rowid_");
        SQLite::Statement copy(file.Database(), "SELECT * FROM main.Lernkarten NOT INDEXED ORDER BY _rowid_");
        bool same = true;
        while (same && old.executeStep()) {
            same = copy.executeStep();
            for (int i = 0; same && i < old.getColumnCount(); ++i) {
                const SQLite::Column one = old.getColumn(i), other = copy.getColumn(i);
                same = one.getType() == other.getType() && one.getString() == other.getString();
            }
        }
        if (!same || copy.executeStep())
            ThrowDamaged(to);
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, to);
    }
}

} // namespace

void GivePageSums(const QString &path, const Progress &progress)
{
    const QString place = Resolved(path);
    const FileHandle old = OpenFile(place, O_RDWR);
    LockCardFile(old.Get(), F_WRLCK, place);
    if (HasUnfinishedChange(place)) // another program had it meanwhile
        ThrowLocked(place);
    FreshFile fresh(place);
    fresh.Make([&](const QString &file) {
        CopyCards(place, file);
        CheckCopy(place, file, progress);
    });
    fresh.TakePlace();
}

} // namespace paukfix
