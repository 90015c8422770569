// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFileCheck.h"

#include "CardFile.h"
#include "StoreError.h"

#include <QFile>
#include <sqlite3.h>

#include <algorithm>
#include <vector>

namespace {

// The check walks the trees from their ends, which is the slowest way to read from a disk. Reading the file
// once in its order first brings it into the system's cache.
void ReadAhead(SQLite::Database &database)
{
    constexpr sqlite3_int64 most = 512 << 20; // bytes; beyond that the cache might not hold it
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        return;
    std::vector<char> block(std::size_t{1} << 20);
    for (sqlite3_int64 at = 0; at < std::min(size, most); at += static_cast<sqlite3_int64>(block.size()))
        // A read beyond the end fails, and a true fault meets the check itself.
        file->pMethods->xRead(file, block.data(), static_cast<int>(block.size()), at);
}

} // namespace

void CheckCardFile(SQLite::Database &database)
{
    const QString path = QFile::decodeName(sqlite3_db_filename(database.getHandle(), "main"));
    ReadAhead(database);
    try {
        if (database.execAndGet("PRAGMA main.integrity_check(1)").getString() == "ok")
            return;
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, path);
    }
    throw StoreError(Fehler::Beschaedigt, QStringLiteral("Die Datei „%1“ ist beschädigt.").arg(path));
}
