// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"

#include "CardRecord.h"
#include "EngineLocks.h"
#include "FileHandle.h"
#include "JournalFile.h"
#include "StoreError.h"

#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// The header's application id: "Pauk" in ASCII. The format version stands in user_version.
constexpr int applicationId = 0x5061756b;
constexpr int formatVersion = 1;
constexpr int highestVersion = 99; // no version of the program will write more

QString Named(const QString &path)
{
    return QStringLiteral("Die Datei „%1“ ").arg(path);
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
            throw StoreError(Fehler::KarteiNichtGefunden,
                             Named(path) + QStringLiteral("wurde nicht gefunden."));
        if (error == ENOENT || error == ENOTDIR)
            throw StoreError(Fehler::PfadNichtGefunden,
                             QStringLiteral("Den Ordner „%1“ gibt es nicht.").arg(directory));
        if (error == ENAMETOOLONG)
            throw StoreError(Fehler::PfadNichtGefunden,
                             QStringLiteral("Der Dateiname „%1“ ist zu lang.").arg(path));
        throw StoreError(Fehler::NichtErlaubt, Named(path) + QStringLiteral("darf nicht gelesen werden."));
    }
    if (S_ISDIR(info.st_mode))
        throw StoreError(Fehler::NichtErlaubt,
                         QStringLiteral("„%1“ ist ein Ordner und keine Kartei.").arg(path));
    if (!S_ISREG(info.st_mode))
        throw StoreError(Fehler::NichtErlaubt, QStringLiteral("„%1“ ist keine gewöhnliche Datei.").arg(path));
    if (::faccessat(AT_FDCWD, name.constData(), R_OK, AT_EACCESS) != 0)
        throw StoreError(Fehler::NichtErlaubt, Named(path) + QStringLiteral("darf nicht gelesen werden."));
    if (access == CardFile::Access::Exclusive) {
        if (::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0)
            throw StoreError(Fehler::NichtErlaubt, Named(path) + QStringLiteral("ist schreibgeschützt."));
        // The journal stands beside the file: without it no answer could be stored.
        if (::faccessat(AT_FDCWD, QFile::encodeName(directory).constData(), W_OK | X_OK, AT_EACCESS) != 0)
            throw StoreError(Fehler::NichtErlaubt,
                             QStringLiteral("Der Ordner „%1“ ist schreibgeschützt.").arg(directory));
    }
    // The engine takes an empty file for an empty database; a card file is never empty.
    if (info.st_size == 0)
        throw StoreError(Fehler::Beschaedigt, Named(path) + QStringLiteral("ist leer und keine Kartei."));
    return info;
}

void Harden(SQLite::Database &database)
{
    sqlite3 *handle = database.getHandle();
    constexpr std::array<std::pair<int, int>, 7> settings{{
        {SQLITE_DBCONFIG_DEFENSIVE, 1},
        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
        {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
        {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
        {SQLITE_DBCONFIG_DQS_DML, 0},
        {SQLITE_DBCONFIG_DQS_DDL, 0},
    }};
    for (const auto &[setting, value] : settings)
        sqlite3_db_config(handle, setting, value, nullptr);
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 32'000'000); // bytes in one text or row
    // The cache takes the pages of a large box (64 MiB at most), so that walks do not read them again and
    // again.
    database.exec("PRAGMA mmap_size=0; PRAGMA cell_size_check=ON; PRAGMA ignore_check_constraints=ON;"
                  "PRAGMA cache_size=-65536;"
                  "PRAGMA foreign_keys=OFF; PRAGMA temp_store=MEMORY");
}

int HeaderNumber(SQLite::Database &database, const char *pragma)
{
    return database.execAndGet(pragma).getInt();
}

// Does the file bear our mark? Read from its bytes: the engine does not tell where it cannot open the file.
bool IsOurs(SQLite::Database &database)
{
    constexpr sqlite3_int64 place = 68; // of the application id in the header, four bytes, highest first
    std::array<unsigned char, 4> id{};
    sqlite3_file *file = nullptr;
    return sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) ==
               SQLITE_OK &&
           file != nullptr && file->pMethods != nullptr &&
           file->pMethods->xRead(file, id.data(), static_cast<int>(id.size()), place) == SQLITE_OK &&
           (id[0] << 24 | id[1] << 16 | id[2] << 8 | id[3]) == applicationId;
}

[[noreturn]] void ThrowDamaged(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt, Named(path) + QStringLiteral("ist beschädigt oder keine Kartei."));
}

// The program's names are case-insensitive, and so are the engine's: the column list is compared so too.
bool HasUniqueIndex(SQLite::Database &database, const char *index, const QStringList &columns)
{
    SQLite::Statement list(
        database,
        R"(SELECT "unique" AND NOT partial FROM pragma_index_list('Lernkarten') WHERE name = ?1 COLLATE NOCASE)");
    list.bind(1, index);
    if (!list.executeStep() || list.getColumn(0).getInt() == 0)
        return false;
    SQLite::Statement info(database, "SELECT name FROM pragma_index_info(?1) ORDER BY seqno");
    info.bind(1, index);
    QStringList found;
    while (info.executeStep())
        found << QString::fromUtf8(info.getColumn(0).getText());
    return found.join(u';').compare(columns.join(u';'), Qt::CaseInsensitive) == 0;
}

// Columns, defaults and indexes that are computed would run what somebody else wrote, on every card.
bool IsComputed(SQLite::Database &database)
{
    constexpr const char *computed =
        "WITH tables AS (SELECT name FROM sqlite_schema WHERE type = 'table' AND sql NOT LIKE 'CREATE "
        "VIRTUAL%') "
        "SELECT EXISTS(SELECT 1 FROM tables t, pragma_table_xinfo(t.name) c WHERE c.hidden <> 0) "
        "OR EXISTS(SELECT 1 FROM tables t, pragma_index_list(t.name) l, pragma_index_xinfo(l.name) i "
        "WHERE l.partial OR i.cid = -2) "
        "OR EXISTS(SELECT 1 FROM pragma_table_info('Lernkarten') WHERE dflt_value LIKE '%(%')";
    return database.execAndGet(computed).getInt() != 0;
}

// What our own files lack they have lost: only in a file of another program is it a matter of the format.
void CheckSchema(SQLite::Database &database, const QString &path)
{
    // A foreign file without our mark is welcome as long as it has the table; a newer version of ours is not.
    const bool ours = HeaderNumber(database, "PRAGMA application_id") == applicationId;
    if (const int version = HeaderNumber(database, "PRAGMA user_version"); ours && version > formatVersion) {
        if (version > highestVersion)
            ThrowDamaged(path);
        throw StoreError(Fehler::FormatUnbekannt,
                         Named(path) +
                             QStringLiteral("wurde mit einer neueren Version von Paukfix geschrieben."));
    }
    SQLite::Statement table(database,
                            "SELECT type, sql LIKE 'CREATE VIRTUAL%' FROM sqlite_schema "
                            "WHERE name = 'Lernkarten' COLLATE NOCASE AND type IN ('table', 'view')");
    if (!table.executeStep() || table.getColumn(0).getString() != "table" ||
        table.getColumn(1).getInt() != 0) {
        if (ours)
            ThrowDamaged(path);
        throw StoreError(Fehler::TabelleFehlt,
                         Named(path) + QStringLiteral("enthält keine Tabelle „Lernkarten“."));
    }
    if (IsComputed(database))
        throw StoreError(Fehler::FormatUnbekannt,
                         Named(path) +
                             QStringLiteral("enthält Berechnungen und wird deshalb nicht geöffnet."));
    const std::array<std::pair<const char *, QStringList>, 2> indexes{{
        {"FrageNr", {QStringLiteral("FrageNr")}},
        {"BoxKey", {QStringLiteral("FachNr"), QStringLiteral("FachLfdNr")}},
    }};
    for (const auto &[index, columns] : indexes) {
        if (HasUniqueIndex(database, index, columns))
            continue;
        if (ours)
            ThrowDamaged(path);
        throw StoreError(Fehler::IndexFehlt,
                         Named(path) + QStringLiteral("hat keinen Index „%1“.").arg(QLatin1String(index)));
    }
}

// Everything that may fail with an engine error while a file is opened, in one place that translates it.
template <class Step>
void Translated(SQLite::Database &database, const QString &path, Step step)
{
    try {
        step();
    } catch (const SQLite::Exception &error) {
        // The engine cannot make out what stands in a file that is ours.
        if (error.getErrorCode() == SQLITE_ERROR && IsOurs(database))
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
    try {
        // One thread uses a card file, so the engine need not lock each of its calls against others.
        return {QFile::encodeName(path).constData(), flags | SQLite::OPEN_NOMUTEX};
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, path);
    }
}

} // namespace

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
        throw StoreError(Fehler::NichtErlaubt, Named(path) + QStringLiteral("darf nicht geändert werden."));
    case SQLITE_CANTOPEN:
        if (const QString directory = QFileInfo(path).absolutePath(); !QFileInfo(directory).isDir())
            throw StoreError(Fehler::PfadNichtGefunden,
                             QStringLiteral("Den Ordner „%1“ gibt es nicht.").arg(directory));
        throw StoreError(Fehler::NichtErlaubt, Named(path) + QStringLiteral("kann nicht geöffnet werden."));
    case SQLITE_FULL:
        throw StoreError(
            Fehler::DatentraegerVoll,
            QStringLiteral("Der Datenträger ist voll; in „%1“ wurde nichts gespeichert.").arg(path));
    case SQLITE_NOMEM:
        throw StoreError(Fehler::ZuWenigSpeicher, QStringLiteral("Nicht genügend Speicher."));
    case SQLITE_TOOBIG:
        throw StoreError(Fehler::TextZuLang,
                         QStringLiteral("Ein Text in der Datei „%1“ ist zu lang.").arg(path));
    case SQLITE_IOERR:
        throw StoreError(code, QStringLiteral("Ein-/Ausgabefehler bei der Datei „%1“.").arg(path));
    case SQLITE_CONSTRAINT:
        if (error.getExtendedErrorCode() == SQLITE_CONSTRAINT_UNIQUE ||
            error.getExtendedErrorCode() == SQLITE_CONSTRAINT_PRIMARYKEY)
            throw StoreError(Fehler::DoppelterSchluessel,
                             QStringLiteral("Eine Karte mit diesem Schlüssel gibt es schon."));
        [[fallthrough]];
    default:
        throw StoreError(
            code, QStringLiteral("Fehler der Datenbank bei der Datei „%1“ (Nummer %2).").arg(path).arg(code));
    }
}

CardFile::CardFile(const QString &path, Access access)
    : path_(Absolute(path)),
      database_(
          (StatCardFile(path_, access),
           OpenDatabase(path_, access == Access::Exclusive ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY)))
{
    Translated(database_, path_, [&] {
        // The engine would follow such a journal to files of other places, and might delete one. The first
        // thing that it reads of the file makes it look for the journal.
        if (NamesOtherFiles(path_ + QStringLiteral("-journal")))
            ThrowDamaged(path_);
        Harden(database_);
        if (access == Access::Exclusive) {
            if (sqlite3_db_readonly(database_.getHandle(), "main") == 1)
                throw StoreError(Fehler::NichtErlaubt,
                                 Named(path_) + QStringLiteral("ist schreibgeschützt."));
            // A hot journal is rolled back here, and what is left of it or of an earlier one goes with the
            // change of mode. The lock that BEGIN EXCLUSIVE takes is kept until the file is closed.
            database_.exec("PRAGMA journal_mode=PERSIST; PRAGMA journal_mode=DELETE;"
                           "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;"
                           "PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; PRAGMA secure_delete=ON");
        }
        CheckSchema(database_, path_);
    });
    const struct stat info = StatCardFile(path_, access);
    device_ = info.st_dev;
    inode_ = info.st_ino;
    if (access == Access::Exclusive)
        locked_ = LastLockedByEngine();
    NoteState();
}

CardFile::~CardFile()
{
    // At its end the engine deletes the journal by its name, unless it is told to keep it.
    if (IsReplaced())
        database_.tryExec("PRAGMA journal_mode=PERSIST");
}

void CardFile::Create(const QString &path)
{
    const QString absolute = Absolute(path);
    SQLite::Database database = OpenDatabase(absolute, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    QString columns;
    for (const CardColumn &column : CardColumns()) {
        if (!columns.isEmpty())
            columns += u',';
        columns +=
            QStringLiteral("\"%1\" %2").arg(QLatin1String(column.name), QLatin1String(column.declaredType));
    }
    const std::string sql =
        QStringLiteral("PRAGMA synchronous=EXTRA; BEGIN;"
                       "PRAGMA application_id=%1; PRAGMA user_version=%2;"
                       "CREATE TABLE \"Lernkarten\"(%3);"
                       "CREATE UNIQUE INDEX \"FrageNr\" ON \"Lernkarten\"(\"FrageNr\");"
                       "CREATE UNIQUE INDEX \"BoxKey\" ON \"Lernkarten\"(\"FachNr\",\"FachLfdnr\");"
                       "COMMIT")
            .arg(applicationId)
            .arg(formatVersion)
            .arg(columns)
            .toStdString();
    Translated(database, absolute, [&] {
        Harden(database);
        database.exec(sql);
    });
}

// Does something else stand where the file stood?
bool CardFile::IsReplaced() const
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path_).constData(), &info) == 0 &&
           (info.st_dev != device_ || info.st_ino != inode_);
}

void CardFile::CheckStillInPlace() const
{
    if (IsReplaced() || !QFileInfo::exists(path_))
        throw StoreError(
            Fehler::KarteiNichtGefunden,
            Named(path_) + QStringLiteral("wurde gelöscht, umbenannt oder ersetzt, während sie offen war."));
    // Where the lock is there still, nothing happens.
    if (locked_ >= 0)
        LockCardFile(locked_, F_WRLCK, path_);
}

void CardFile::CheckUnchanged() const
{
    CheckStillInPlace();
    if (state_ && state_ != ReadState())
        throw StoreError(
            Fehler::Gesperrt,
            Named(path_) +
                QStringLiteral("wurde von einem anderen Programm geändert, während sie offen war."));
}

void CardFile::NoteState()
{
    state_ = ReadState();
}

std::optional<CardFile::State> CardFile::ReadState() const
{
    constexpr off_t place = 24; // of the count in the header
    State state;
    struct stat info = {};
    if (locked_ < 0 || ::fstat(locked_, &info) != 0)
        return std::nullopt;
    state.size = info.st_size;
    if (::pread(locked_, state.changes.data(), state.changes.size(), place) < 0)
        return std::nullopt;
    return state;
}

void CheckReplaceable(const QString &path)
{
    if (!QFileInfo::exists(path))
        return;
    try {
        CheckAccess(path, CardFile::Access::Exclusive);
    } catch (const StoreError &error) {
        if (error.Number() == Fehler::Beschaedigt)
            return; // empty: nothing that anybody could have open as a card file
        throw;
    }
    const FileHandle file(::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (file.Get() >= 0)
        LockCardFile(file.Get(), F_WRLCK, path);
}

void CheckAccess(const QString &path, CardFile::Access access)
{
    StatCardFile(Absolute(path), access);
}
