// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"

#include "CardSchema.h"
#include "CardSnapshot.h"
#include "EngineLocks.h"
#include "FileHandle.h"
#include "JournalFile.h"
#include "PageSums.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A pipe or a device under the name of a journal or a log would keep the engine waiting for ever.
void CheckCompanions(const QString &path)
{
    for (const char *suffix : CompanionSuffixes) {
        struct stat info = {};
        const QString name = CompanionOf(path, suffix);
        if (::stat(QFile::encodeName(name).constData(), &info) == 0 && !S_ISREG(info.st_mode))
            ThrowNoRegularFile(name);
    }
}

// Refuses, before the engine sees it, what is no regular file that this program may write.
struct stat StatCardFile(const QString &path, CardFile::Access access)
{
    const QByteArray name = QFile::encodeName(path);
    const QString directory = QFileInfo(path).absolutePath();
    struct stat info = {};
    if (::stat(name.constData(), &info) != 0) {
        const int error = errno;
        if (error == ENOENT && QFileInfo(directory).isDir())
            throw StoreError(Fehler::KarteiNichtGefunden, DateiSatz(path) + u"wurde nicht gefunden."_s);
        if (error == ENOENT || error == ENOTDIR)
            throw StoreError(Fehler::PfadNichtGefunden, u"Den Ordner „%1“ gibt es nicht."_s.arg(directory));
        if (error == ENAMETOOLONG)
            throw StoreError(Fehler::PfadNichtGefunden, u"Der Dateiname „%1“ ist zu lang."_s.arg(path));
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(path) + u"darf nicht gelesen werden."_s);
    }
    if (S_ISDIR(info.st_mode))
        throw StoreError(Fehler::NichtErlaubt, u"„%1“ ist ein Ordner und keine Kartei."_s.arg(path));
    if (!S_ISREG(info.st_mode))
        ThrowNoRegularFile(path);
    if (::faccessat(AT_FDCWD, name.constData(), R_OK, AT_EACCESS) != 0)
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(path) + u"darf nicht gelesen werden."_s);
    if (access == CardFile::Access::Exclusive) {
        if (::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0)
            throw StoreError(Fehler::NichtErlaubt, DateiSatz(path) + u"ist schreibgeschützt."_s);
        // The journal stands beside the file: without it no answer could be stored.
        const QString beside = QFileInfo(Resolved(path)).path();
        if (::faccessat(AT_FDCWD, QFile::encodeName(beside).constData(), W_OK | X_OK, AT_EACCESS) != 0)
            throw StoreError(Fehler::NichtErlaubt, u"Der Ordner „%1“ ist schreibgeschützt."_s.arg(beside));
    }
    CheckCompanions(path);
    // The engine takes an empty file for an empty database; a card file is never empty.
    if (info.st_size == 0)
        throw StoreError(Fehler::Beschaedigt, DateiSatz(path) + u"ist leer und keine Kartei."_s);
    return info;
}

void Harden(SQLite::Database &database)
{
    Distrust(database);
    sqlite3 *handle = database.getHandle();
    for (const int setting : {SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL})
        sqlite3_db_config(handle, setting, 0, nullptr);
    // The cache takes the pages of a large box (64 MiB at most), so that walks do not read them again and
    // again.
    database.exec("PRAGMA ignore_check_constraints=ON; PRAGMA cache_size=-65536;"
                  "PRAGMA foreign_keys=OFF; PRAGMA temp_store=MEMORY");
}

// Everything that may fail with an engine error while a file is opened, in one place that translates it.
template <class Step>
void Translated(SQLite::Database &database, const QString &path, Step step)
{
    try {
        step();
    } catch (const SQLite::Exception &error) {
        // The engine cannot make out what stands in a file that is ours.
        if (error.getErrorCode() == SQLITE_ERROR && CardFileHeader(database).IsOurs())
            ThrowDamaged(path);
        ThrowStoreError(error, path);
    }
}

// The engine takes names like "file:x?mode=..." for more than a name; an absolute path is always just a path.
QString Absolute(const QString &path)
{
    return QFileInfo(path).absoluteFilePath();
}

SQLite::Database OpenDatabase(const QString &path, int flags)
{
    UseOpenFileLocks();
    UsePageSums();
    try {
        // One thread uses a card file, so the engine need not lock each of its calls against others.
        return {QFile::encodeName(path).constData(), flags | SQLite::OPEN_NOMUTEX | SQLite::OPEN_URI};
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, path);
    }
}

} // namespace

void Distrust(SQLite::Database &database)
{
    sqlite3 *handle = database.getHandle();
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int setting : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION})
        sqlite3_db_config(handle, setting, 0, nullptr);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 32'000'000); // bytes in one text or row
    database.exec("PRAGMA mmap_size=0; PRAGMA cell_size_check=ON");
}

void ThrowStoreError(const SQLite::Exception &error, const QString &path)
{
    const int code = error.getErrorCode() & 0xff;
    switch (code) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        ThrowDamaged(path);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        ThrowLocked(path);
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(path) + u"darf nicht geändert werden."_s);
    case SQLITE_CANTOPEN:
        if (const QString directory = QFileInfo(path).absolutePath(); !QFileInfo(directory).isDir())
            throw StoreError(Fehler::PfadNichtGefunden, u"Den Ordner „%1“ gibt es nicht."_s.arg(directory));
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(path) + u"kann nicht geöffnet werden."_s);
    case SQLITE_FULL:
        throw StoreError(Fehler::DatentraegerVoll,
                         u"Der Datenträger ist voll; in „%1“ wurde nichts gespeichert."_s.arg(path));
    case SQLITE_NOMEM:
        throw StoreError(Fehler::ZuWenigSpeicher, u"Nicht genügend Speicher."_s);
    case SQLITE_TOOBIG:
        throw StoreError(Fehler::TextZuLang, u"Ein Text in der Datei „%1“ ist zu lang."_s.arg(path));
    case SQLITE_IOERR:
        if (error.getExtendedErrorCode() == SQLITE_IOERR_DATA) // a page's sum does not fit
            ThrowDamaged(path);
        throw StoreError(Fehler::GeraeteFehler, u"Ein-/Ausgabefehler bei der Datei „%1“."_s.arg(path));
    case SQLITE_CONSTRAINT:
        if (error.getExtendedErrorCode() == SQLITE_CONSTRAINT_UNIQUE ||
            error.getExtendedErrorCode() == SQLITE_CONSTRAINT_PRIMARYKEY)
            throw StoreError(Fehler::DoppelterSchluessel,
                             u"Eine Karte mit diesem Schlüssel gibt es schon."_s);
        [[fallthrough]];
    default:
        throw StoreError(code, u"Fehler der Datenbank bei der Datei „%1“ (Nummer %2)."_s.arg(path).arg(code));
    }
}

CardFile::CardFile(const QString &path, Access access)
    : path_(Absolute(path)),
      database_(
          (CheckAccess(path_, access),
           OpenDatabase(path_, access == Access::Exclusive ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY)))
{
    Translated(database_, path_, [&] {
        // The engine would follow such a journal to files of other places, and might delete one. The first
        // thing that it reads of the file makes it look for the journal.
        if (NamesOtherFiles(CompanionOf(path_, "-journal")))
            ThrowDamaged(path_);
        Harden(database_);
        if (access == Access::Exclusive) {
            if (const CardFileHeader header(database_); header.IsOurs() && !header.HasFormatOfEngine())
                ThrowDamaged(path_);
            if (sqlite3_db_readonly(database_.getHandle(), "main") == 1)
                throw StoreError(Fehler::NichtErlaubt, DateiSatz(path_) + u"ist schreibgeschützt."_s);
            // A hot journal is rolled back here, and what is left of it or of an earlier one goes with the
            // change of mode. The lock that BEGIN EXCLUSIVE takes is kept until the file is closed.
            database_.exec("PRAGMA journal_mode=PERSIST; PRAGMA journal_mode=DELETE;"
                           "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;"
                           "PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; PRAGMA secure_delete=ON");
        }
        CheckContent(database_, path_);
    });
    const struct stat info = StatCardFile(path_, access);
    device_ = info.st_dev;
    inode_ = info.st_ino;
    if (access == Access::Exclusive)
        locked_ = LastLockedByEngine();
    NoteState();
}

CardFile::CardFile(const QString &path, std::unique_ptr<CardSnapshot> copy)
    : path_(Absolute(path)),
      copy_(std::move(copy)),
      database_(OpenDatabase(copy_->Path(), SQLite::OPEN_READONLY))
{
    Translated(database_, path_, [&] {
        Harden(database_);
        CheckContent(database_, path_);
    });
}

CardFile::~CardFile()
{
    if (copy_ || IsInPlace())
        return;
    // At its end the engine deletes the journal by its name, unless it is told to keep it; that of a file
    // that is gone it may leave.
    const QString journal =
        QFile::decodeName(sqlite3_filename_journal(sqlite3_db_filename(database_.getHandle(), "main")));
    if (IsReplaced() || HoldsChange(journal))
        database_.tryExec("PRAGMA journal_mode=PERSIST");
    else if (locked_ >= 0) // with the lock it is ours
        QFile::remove(journal);
}

void CardFile::Create(const QString &path)
{
    const QString absolute = Absolute(path);
    SQLite::Database database = OpenDatabase(absolute, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    Translated(database, absolute, [&] {
        int room = PageSumSize;
        sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_RESERVE_BYTES, &room);
        Harden(database);
        WriteUnsynced(database);
        database.exec("BEGIN;" + NewFileSql() + "COMMIT");
    });
}

void CardFile::WriteUnsynced(SQLite::Database &database)
{
    database.exec("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF; PRAGMA cache_size=-2048");
}

const QString &CardFile::ReadablePath() const
{
    return copy_ ? copy_->Path() : path_;
}

bool CardFile::LacksPageSums()
{
    bool lacks = false;
    Translated(database_, path_, [&] { lacks = HasFormerFormat(database_); });
    return lacks;
}

// Does something else stand where the file stood?
bool CardFile::IsReplaced() const
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path_).constData(), &info) == 0 &&
           (info.st_dev != device_ || info.st_ino != inode_);
}

bool CardFile::IsInPlace() const
{
    return !IsReplaced() && QFileInfo::exists(path_);
}

void CardFile::CheckStillInPlace() const
{
    if (copy_)
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(path_) + u"ist nur zum Ansehen geöffnet."_s);
    if (!IsInPlace())
        throw StoreError(Fehler::KarteiNichtGefunden,
                         DateiSatz(path_) +
                             u"wurde gelöscht, umbenannt oder ersetzt, während sie offen war."_s);
    // Where the lock is there still, nothing happens.
    if (locked_ >= 0)
        LockCardFile(locked_, F_WRLCK, path_);
}

void CardFile::CheckUnchanged() const
{
    CheckStillInPlace();
    if (IsChanged())
        throw StoreError(Fehler::Gesperrt,
                         DateiSatz(path_) +
                             u"wurde von einem anderen Programm geändert, während sie offen war."_s);
    beforeChange();
}

void CardFile::NoteState()
{
    state_ = ReadState();
}

std::optional<CardFile::State> CardFile::ReadState() const
{
    constexpr off_t Place = 24; // of the count in the header
    State state;
    struct stat info = {};
    if (locked_ < 0 || ::fstat(locked_, &info) != 0)
        return std::nullopt;
    state.device = info.st_dev;
    state.inode = info.st_ino;
    state.size = info.st_size;
    if (::pread(locked_, state.changes.data(), state.changes.size(), Place) < 0)
        return std::nullopt;
    return state;
}

void CheckNameLength(const QString &path)
{
    constexpr qsizetype Longest = 255 - 8; // bytes; more would leave no room for "-journal"
    if (QFile::encodeName(QFileInfo(Resolved(path)).fileName()).size() > Longest)
        throw StoreError(Fehler::PfadNichtGefunden, u"Der Dateiname „%1“ ist zu lang."_s.arg(path));
}

void CheckReplaceable(const QString &path)
{
    if (!QFileInfo::exists(path))
        return;
    try {
        StatCardFile(path, CardFile::Access::Exclusive);
    } catch (const StoreError &error) {
        if (error.Number() == Fehler::Beschaedigt)
            return; // empty: nothing that anybody could have open as a card file
        throw;
    }
    const FileHandle file(::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    LockCardFile(file.Get(), F_WRLCK, path);
}

void EndUnfinishedChange(const QString &path)
{
    // A journal beside anything else would be rolled into it, and into what bears its second name.
    const auto isDatabase = [&path] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) && file.read(16) == QByteArrayView("SQLite format 3\0", 16);
    };
    if (!HasUnfinishedChange(path) || !isDatabase())
        return;
    try {
        const CardFile file(path);
    } catch (const StoreError &error) {
        // It need be no card file: the engine has done its part before the tables are looked at.
        if (error.Number() != Fehler::Beschaedigt && HasUnfinishedChange(path))
            throw;
    }
}

void CheckAccess(const QString &path, CardFile::Access access)
{
    const QString place = Absolute(path);
    StatCardFile(place, access);
    if (access == CardFile::Access::Exclusive)
        CheckNameLength(place);
}

} // namespace paukfix
