// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSchema.h"

#include "CardRecord.h"
#include "PageSums.h"
#include "StoreError.h"

#include <QStringList>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int FormatVersion = FirstVersionWithSums; // in user_version
constexpr int FormerVersion = 1;                    // without sums
constexpr int HighestVersion = 99;                  // no version of the program will write more

int HeaderNumber(SQLite::Database &database, const char *pragma)
{
    return database.execAndGet(pragma).getInt();
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
    constexpr const char *Computed =
        "WITH tables AS (SELECT name FROM sqlite_schema WHERE type = 'table' AND sql NOT LIKE 'CREATE "
        "VIRTUAL%') "
        "SELECT EXISTS(SELECT 1 FROM tables t, pragma_table_xinfo(t.name) c WHERE c.hidden <> 0) "
        "OR EXISTS(SELECT 1 FROM tables t, pragma_index_list(t.name) l, pragma_index_xinfo(l.name) i "
        "WHERE l.partial OR i.cid = -2) "
        "OR EXISTS(SELECT 1 FROM pragma_table_info('Lernkarten') WHERE dflt_value LIKE '%(%')";
    return database.execAndGet(Computed).getInt() != 0;
}

void CheckNothingComputed(SQLite::Database &database, const QString &path)
{
    if (IsComputed(database))
        throw StoreError(Fehler::FormatUnbekannt,
                         DateiSatz(path) + u"enthält Berechnungen und wird deshalb nicht geöffnet."_s);
}

struct SchemaEntry
{
    const char *type;
    const char *name;
    QString sql;
};

// What a card file of ours holds, letter by letter: the engine keeps the texts as they were given to it. They
// differ between versions, so that no changed byte makes one of the other.
std::array<SchemaEntry, 3> OurSchema(int version)
{
    QString columns;
    for (const CardColumn &column : CardColumns()) {
        if (!columns.isEmpty())
            columns += version == FormerVersion ? u","_s : u", "_s;
        columns += u"\"%1\" %2"_s.arg(QLatin1String(column.name), QLatin1String(column.declaredType));
    }
    return {{
        {"table", "Lernkarten", u"CREATE TABLE \"Lernkarten\"(%1)"_s.arg(columns)},
        {"index", "FrageNr", u"CREATE UNIQUE INDEX \"FrageNr\" ON \"Lernkarten\"(\"FrageNr\")"_s},
        {"index", "BoxKey", u"CREATE UNIQUE INDEX \"BoxKey\" ON \"Lernkarten\"(\"FachNr\",\"FachLfdnr\")"_s},
    }};
}

// One changed letter gives a column another name, or another affinity: the text 007 becomes 7 then.
bool HasOurSchema(SQLite::Database &database, int version)
{
    SQLite::Statement found(database, "SELECT count(*) FROM sqlite_schema WHERE type = ?1 AND name = ?2 AND "
                                      "tbl_name = 'Lernkarten' AND sql = ?3");
    const auto entries = OurSchema(version);
    for (const SchemaEntry &entry : entries) {
        found.bind(1, entry.type);
        found.bind(2, entry.name);
        found.bind(3, entry.sql.toStdString());
        if (!found.executeStep() || found.getColumn(0).getInt() != 1)
            return false;
        found.reset();
    }
    constexpr const char *Count = "SELECT count(*) FROM sqlite_schema WHERE type IN ('table', 'index') AND "
                                  "tbl_name = 'Lernkarten' COLLATE NOCASE";
    return database.execAndGet(Count).getInt() == static_cast<int>(entries.size());
}

// Our own files have just our schema: what differs is damage. A newer format has another schema and a higher
// version, so that no single changed byte passes for it.
void CheckOurSchema(SQLite::Database &database, const CardFileHeader &header, const QString &path)
{
    const int version = HeaderNumber(database, "PRAGMA user_version");
    const bool isFormer = HasOurSchema(database, FormerVersion);
    const bool isPresent = HasOurSchema(database, FormatVersion);
    if (!isFormer && !isPresent && version > FormatVersion && version <= HighestVersion)
        throw StoreError(Fehler::FormatUnbekannt,
                         DateiSatz(path) + u"wurde mit einer neueren Version von Paukfix geschrieben."_s);
    if (!(isFormer && version <= FormerVersion) &&
        !(isPresent && version == FormatVersion && header.NamesSums()))
        ThrowDamaged(path);
}

// A file of another program, without our mark, is welcome as long as it has the table and the indexes.
void CheckForeignSchema(SQLite::Database &database, const CardFileHeader &header, const QString &path)
{
    // Whoever copies our table into a file of his own does not keep room for sums in it: the mark is damaged.
    if (header.HasRoomForSums() && HasOurSchema(database, FormatVersion))
        ThrowDamaged(path);
    SQLite::Statement table(database,
                            "SELECT type, sql LIKE 'CREATE VIRTUAL%' FROM sqlite_schema "
                            "WHERE name = 'Lernkarten' COLLATE NOCASE AND type IN ('table', 'view')");
    if (!table.executeStep() || table.getColumn(0).getString() != "table" || table.getColumn(1).getInt() != 0)
        throw StoreError(Fehler::TabelleFehlt, DateiSatz(path) + u"enthält keine Tabelle „Lernkarten“."_s);
    CheckNothingComputed(database, path);
    const std::array<std::pair<const char *, QStringList>, 2> indexes{{
        {"FrageNr", {u"FrageNr"_s}},
        {"BoxKey", {u"FachNr"_s, u"FachLfdNr"_s}},
    }};
    for (const auto &[index, columns] : indexes) {
        if (HasUniqueIndex(database, index, columns))
            continue;
        throw StoreError(Fehler::IndexFehlt,
                         DateiSatz(path) + u"hat keinen Index „%1“."_s.arg(QLatin1String(index)));
    }
}

} // namespace

void CheckContent(SQLite::Database &database, const QString &path)
{
    const CardFileHeader header(database);
    if (header.IsOurs()) {
        CheckOurSchema(database, header, path);
        CheckNothingComputed(database, path); // in what else stands in the file
    } else {
        CheckForeignSchema(database, header, path);
    }
    if (!header.IsRead())
        throw StoreError(Fehler::GeraeteFehler, u"Ein-/Ausgabefehler bei der Datei „%1“."_s.arg(path));
    if (!header.CountsItsPages())
        ThrowDamaged(path);
}

CardFileHeader::CardFileHeader(SQLite::Database &database)
{
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    isRead_ =
        sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK &&
        file != nullptr && file->pMethods != nullptr &&
        file->pMethods->xRead(file, bytes_.data(), static_cast<int>(bytes_.size()), 0) == SQLITE_OK &&
        file->pMethods->xFileSize(file, &size) == SQLITE_OK;
    size_ = size;
}

std::int64_t CardFileHeader::At(std::size_t place) const
{
    std::int64_t number = 0;
    for (std::size_t i = place; i < place + 4; ++i)
        number = number << 8 | bytes_.at(i);
    return number;
}

bool CardFileHeader::IsOurs() const
{
    return isRead_ && At(68) == CardFileMark;
}

bool CardFileHeader::HasRoomForSums() const
{
    return isRead_ && bytes_[20] == PageSumSize;
}

bool CardFileHeader::NamesSums() const
{
    return isRead_ && NamesPageSums(bytes_);
}

bool CardFileHeader::CountsItsPages() const
{
    if (bytes_[19] == 2 || (!IsOurs() && (At(28) == 0 || At(24) != At(92))))
        return true;
    const std::int64_t pageSize = bytes_[16] << 8 | bytes_[17];
    return At(28) * (pageSize == 1 ? 65536 : pageSize) == size_;
}

bool HasFormerFormat(SQLite::Database &database)
{
    const CardFileHeader header(database);
    return header.IsOurs() && !header.NamesSums() && HasOurSchema(database, FormerVersion) &&
           database.execAndGet("SELECT count(*) FROM sqlite_schema").getInt() ==
               static_cast<int>(OurSchema(FormerVersion).size());
}

std::string NewFileSql()
{
    QString sql = u"PRAGMA application_id=%1; PRAGMA user_version=%2;"_s.arg(CardFileMark).arg(FormatVersion);
    for (const SchemaEntry &entry : OurSchema(FormatVersion))
        sql += entry.sql + u';';
    return sql.toStdString();
}

void ThrowDamaged(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt, DateiSatz(path) + u"ist beschädigt oder keine Kartei."_s);
}

void ThrowNoRegularFile(const QString &path)
{
    throw StoreError(Fehler::NichtErlaubt, u"„%1“ ist keine gewöhnliche Datei."_s.arg(path));
}

QString DateiSatz(const QString &path)
{
    return u"Die Datei „%1“ "_s.arg(path);
}

} // namespace paukfix
