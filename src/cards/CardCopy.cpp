// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardCopy.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "StoreError.h"

#include <QFile>
#include <SQLiteCpp/Backup.h>
#include <sqlite3.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The engine does not tell which of both has failed.
void CheckReadable(SQLite::Database &database)
{
    try {
        // Each text, or overflow pages would not be read.
        database.execAndGet("SELECT sum(length(CAST(Frage AS BLOB))+length(CAST(Antwort_1 AS BLOB))) "
                            "FROM Lernkarten NOT INDEXED");
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, QFile::decodeName(sqlite3_db_filename(database.getHandle(), "main")));
    }
}

} // namespace

void CopyCardFile(SQLite::Database &from, const QString &to)
{
    try {
        CardFile::Create(to);
        CardFile copy(to);
        CardFile::WriteUnsynced(copy.Database());
        SQLite::Backup(copy.Database(), from).executeStep();
    } catch (const SQLite::Exception &error) {
        CheckReadable(from);
        ThrowStoreError(error, to);
    }
    // Opened anew, as what the engine has just written it still knows by heart.
    CardFile copy(to);
    CheckCardFile(copy.Database());
}

} // namespace paukfix
