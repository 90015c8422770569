// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PageSums.h"

#include "CardSchema.h"
#include "StoreError.h"

#include <QtEndian>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <bit>
#include <new>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t HeaderSize = 100;
constexpr int SmallestPage = 512;

using PageSum = std::array<std::uint8_t, PageSumSize>;

// Two sums over numbers of 32 bits, each number going into one and each sum into the other.
PageSum SumOf(Bytes page)
{
    const std::size_t end = page.size() - PageSumSize;
    std::uint32_t one = 0, other = 0;
    for (std::size_t at = 0; at < end; at += 8) {
        // In this order each of the two waits for one addition only.
        one = (one + qFromLittleEndian<std::uint32_t>(&page[at])) + other;
        other = (other + qFromLittleEndian<std::uint32_t>(&page[at + 4])) + one;
    }
    PageSum sum;
    qToLittleEndian(one, sum.data());
    qToLittleEndian(other, sum.data() + 4);
    return sum;
}

// A database or its rollback journal. The layer below has its own part behind this one.
struct SummedFile : sqlite3_file
{
    SummedFile *database = nullptr; // itself, or the one that the journal belongs to
    bool hasSums = false;
    int pageSize = 0;

    sqlite3_file *Below() { return reinterpret_cast<sqlite3_file *>(this + 1); }

    void LookAtHeader(const void *start, int size, sqlite3_int64 place)
    {
        if (place != 0 || size < static_cast<int>(HeaderSize))
            return;
        const Bytes header(static_cast<const std::uint8_t *>(start), HeaderSize);
        hasSums = NamesPageSums(header);
        pageSize = header[16] << 8 | header[17];
        pageSize = pageSize == 1 ? 65536 : pageSize;
    }
};

SummedFile &Summed(sqlite3_file *file)
{
    return *static_cast<SummedFile *>(file);
}

sqlite3_file *Below(sqlite3_file *file)
{
    return Summed(file).Below();
}

int Read(sqlite3_file *file, void *target, int size, sqlite3_int64 place)
{
    SummedFile &self = Summed(file);
    const int result = self.Below()->pMethods->xRead(self.Below(), target, size, place);
    if (result != SQLITE_OK)
        return result;
    const bool isDatabase = self.database == &self;
    if (isDatabase)
        self.LookAtHeader(target, size, place);
    const int pageSize = self.database->pageSize;
    // A database is read in whole pages, a journal keeps them between numbers of 4 bytes.
    if (!self.database->hasSums || pageSize < SmallestPage ||
        (isDatabase ? size % pageSize != 0 || place % pageSize != 0 : size != pageSize))
        return SQLITE_OK;
    const Bytes pages(static_cast<const std::uint8_t *>(target), static_cast<std::size_t>(size));
    const auto step = static_cast<std::size_t>(pageSize);
    for (std::size_t at = 0; at < pages.size(); at += step)
        if (!PageSumFits(pages.subspan(at, step)))
            return SQLITE_IOERR_DATA;
    return SQLITE_OK;
}

int Write(sqlite3_file *file, const void *source, int size, sqlite3_int64 place)
{
    SummedFile &self = Summed(file);
    if (self.database == &self) {
        self.LookAtHeader(source, size, place);
        // In the engine's own copy of the page: what it journals later must bear the sum too.
        if (self.hasSums && size >= SmallestPage && std::has_single_bit(static_cast<unsigned>(size))) {
            auto *page = static_cast<std::uint8_t *>(const_cast<void *>(source));
            const PageSum sum = SumOf({page, static_cast<std::size_t>(size)});
            std::copy(sum.begin(), sum.end(), page + size - PageSumSize);
        }
    }
    return self.Below()->pMethods->xWrite(self.Below(), source, size, place);
}

// All else goes on to the layer below. Files are not mapped into memory (version 2): nothing would be
// compared.
constexpr sqlite3_io_methods Methods(int version)
{
    return {
        version,
        [](sqlite3_file *f) { return Below(f)->pMethods->xClose(Below(f)); },
        Read,
        Write,
        [](sqlite3_file *f, sqlite3_int64 size) { return Below(f)->pMethods->xTruncate(Below(f), size); },
        [](sqlite3_file *f, int flags) { return Below(f)->pMethods->xSync(Below(f), flags); },
        [](sqlite3_file *f, sqlite3_int64 *size) { return Below(f)->pMethods->xFileSize(Below(f), size); },
        [](sqlite3_file *f, int lock) { return Below(f)->pMethods->xLock(Below(f), lock); },
        [](sqlite3_file *f, int lock) { return Below(f)->pMethods->xUnlock(Below(f), lock); },
        [](sqlite3_file *f, int *isLocked) {
            return Below(f)->pMethods->xCheckReservedLock(Below(f), isLocked);
        },
        [](sqlite3_file *f, int what, void *argument) {
            return Below(f)->pMethods->xFileControl(Below(f), what, argument);
        },
        [](sqlite3_file *f) { return Below(f)->pMethods->xSectorSize(Below(f)); },
        [](sqlite3_file *f) {
            int can = Below(f)->pMethods->xDeviceCharacteristics(Below(f));
#ifdef SQLITE_IOCAP_SUBPAGE_READ
            can &= ~SQLITE_IOCAP_SUBPAGE_READ; // parts of pages could not be compared
#endif
            return can;
        },
        [](sqlite3_file *f, int page, int size, int extend, void volatile **memory) {
            return Below(f)->pMethods->xShmMap(Below(f), page, size, extend, memory);
        },
        [](sqlite3_file *f, int offset, int count, int flags) {
            return Below(f)->pMethods->xShmLock(Below(f), offset, count, flags);
        },
        [](sqlite3_file *f) { Below(f)->pMethods->xShmBarrier(Below(f)); },
        [](sqlite3_file *f, int remove) { return Below(f)->pMethods->xShmUnmap(Below(f), remove); },
        nullptr,
        nullptr,
    };
}

constexpr sqlite3_io_methods WithLog = Methods(2);
constexpr sqlite3_io_methods WithoutLog = Methods(1);

sqlite3_vfs *below = nullptr;
sqlite3_vfs layer;

int Open(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *opened)
{
    if ((flags & (SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_MAIN_JOURNAL)) == 0 || name == nullptr ||
        sqlite3_uri_boolean(name, "sums", 1) == 0)
        return below->xOpen(below, name, file, flags, opened);
    auto *self = new (file) SummedFile();
    self->pMethods = nullptr;
    const int result = below->xOpen(below, name, self->Below(), flags, opened);
    const sqlite3_io_methods *theirs = self->Below()->pMethods;
    if (theirs == nullptr)
        return result;
    self->database = (flags & SQLITE_OPEN_MAIN_DB) != 0
                         ? self
                         : static_cast<SummedFile *>(sqlite3_database_file_object(name));
    self->pMethods = theirs->iVersion >= 2 && theirs->xShmMap != nullptr ? &WithLog : &WithoutLog;
    return result;
}

bool Install()
{
    // Nobody asks the engine how much memory it takes, and counting makes its threads wait for each other.
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    below = sqlite3_vfs_find(nullptr);
    if (below == nullptr)
        return false;
    layer = *below;
    layer.zName = "paukfix";
    layer.szOsFile += static_cast<int>(sizeof(SummedFile));
    layer.xOpen = Open;
    return sqlite3_vfs_register(&layer, 1) == SQLITE_OK;
}

} // namespace

bool NamesPageSums(Bytes header)
{
    return header[20] == PageSumSize && qFromBigEndian<std::uint32_t>(&header[60]) >= FirstVersionWithSums &&
           qFromBigEndian<std::uint32_t>(&header[68]) == CardFileMark;
}

bool PageSumFits(Bytes page)
{
    const PageSum sum = SumOf(page);
    return std::equal(sum.begin(), sum.end(), page.end() - PageSumSize);
}

void UsePageSums()
{
    static const bool installed = Install();
    if (!installed)
        throw StoreError(Fehler::GeraeteFehler, u"Die Datenbank ist nicht zu gebrauchen."_s);
}

} // namespace paukfix
