// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFileCheck.h"

#include "CardFile.h"
#include "CardSchema.h"
#include "StoreError.h"

#include <QFile>
#include <sqlite3.h>

#include <algorithm>
#include <exception>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The check walks the trees from their ends, which is the slowest way to read from a disk. Reading the file
// once in its order first brings it into the system's cache. It is also what compares the sums of pages that
// the trees do not lead to. False where one does not fit.
bool ReadAhead(SQLite::Database &database, const Progress &progress)
{
    constexpr sqlite3_int64 Most = 512 << 20; // bytes; beyond that the cache might not hold it
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file == nullptr || file->pMethods == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        return true;
    std::vector<char> block(std::size_t{1} << 20);
    if (!CardFileHeader(database).NamesSums())
        size = std::min(size, Most);
    for (sqlite3_int64 at = 0; at < size; at += static_cast<sqlite3_int64>(block.size())) {
        if (progress)
            progress(static_cast<int>(at >> 20), static_cast<int>((size >> 20) + 1));
        const auto part = std::min(static_cast<sqlite3_int64>(block.size()), size - at);
        // A true fault of the disk meets the check itself.
        if (file->pMethods->xRead(file, block.data(), static_cast<int>(part), at) == SQLITE_IOERR_DATA)
            return false;
    }
    return true;
}

// Lets the engine tell that it is at work, and end it: an exception must not pass through the engine.
class Waechter
{
public:
    Waechter(SQLite::Database &database, const Progress &progress)
        : handle_(database.getHandle()), progress_(progress)
    {
        constexpr int Instructions = 10'000; // between two calls
        if (progress_)
            sqlite3_progress_handler(handle_, Instructions, Melde, this);
    }

    Waechter(const Waechter &) = delete;
    Waechter &operator=(const Waechter &) = delete;

    ~Waechter() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }

    void Rethrow() const
    {
        if (thrown_)
            std::rethrow_exception(thrown_);
    }

private:
    static int Melde(void *self)
    {
        auto &wache = *static_cast<Waechter *>(self);
        try {
            wache.progress_(0, 0);
            return 0;
        } catch (...) {
            wache.thrown_ = std::current_exception();
            return 1;
        }
    }

    sqlite3 *handle_;
    const Progress &progress_;
    std::exception_ptr thrown_;
};

} // namespace

void CheckCardFile(SQLite::Database &database, const Progress &progress)
{
    const QString path = QFile::decodeName(sqlite3_db_filename(database.getHandle(), "main"));
    const Waechter wache(database, progress);
    try {
        if (ReadAhead(database, progress) &&
            database.execAndGet("PRAGMA main.integrity_check(1)").getString() == "ok")
            return;
    } catch (const SQLite::Exception &error) {
        wache.Rethrow();
        ThrowStoreError(error, path);
    }
    throw StoreError(Fehler::Beschaedigt, u"Die Datei „%1“ ist beschädigt."_s.arg(path));
}

} // namespace paukfix
