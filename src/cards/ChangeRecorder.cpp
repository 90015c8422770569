// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ChangeRecorder.h"

#include "CardRecord.h"
#include "CardValue.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <cstring>
#include <utility>

namespace paukfix {

namespace {

// The bytes of a text or a blob as the engine holds them: asking for a text could convert it in place.
std::pair<const void *, std::size_t> Raw(sqlite3_value *value)
{
    const void *bytes = sqlite3_value_blob(value); // before the count
    return {bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

bool IsSame(sqlite3_value *one, sqlite3_value *other)
{
    const int type = sqlite3_value_type(one);
    if (type != sqlite3_value_type(other))
        return false;
    switch (type) {
    case SQLITE_NULL:
        return true;
    case SQLITE_INTEGER:
        return sqlite3_value_int64(one) == sqlite3_value_int64(other);
    case SQLITE_FLOAT:
        return sqlite3_value_double(one) == sqlite3_value_double(other);
    default: {
        const auto [bytes, size] = Raw(one);
        const auto [otherBytes, otherSize] = Raw(other);
        return size == otherSize && (size == 0 || std::memcmp(bytes, otherBytes, size) == 0);
    }
    }
}

std::string Bytes(const void *bytes, int size)
{
    return size == 0 ? std::string()
                     : std::string(static_cast<const char *>(bytes), static_cast<std::size_t>(size));
}

CardChanges::Value Copy(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    case SQLITE_TEXT: {
        const void *text = sqlite3_value_text(value); // before the count: it may convert
        return CardChanges::Text{Bytes(text, sqlite3_value_bytes(value))};
    }
    case SQLITE_BLOB: {
        const void *blob = sqlite3_value_blob(value);
        return CardChanges::Blob{Bytes(blob, sqlite3_value_bytes(value))};
    }
    default:
        return {};
    }
}

} // namespace

ChangeRecorder::ChangeRecorder(SQLite::Database &database, CardChanges &into, std::function<void()> first)
    : database_(database), into_(into), first_(std::move(first))
{
    SQLite::Statement columns(database, "SELECT cid,name FROM pragma_table_info('Lernkarten') ORDER BY cid");
    while (columns.executeStep()) {
        all_.push_back(columns.getColumn(0).getInt());
        const int known = CardColumnIndex(QString::fromUtf8(columns.getColumn(1).getText()));
        if (known == ColFachNr || known == ColFachLfdNr)
            places_.push_back(all_.back());
    }
    sqlite3_preupdate_hook(database_.getHandle(), &ChangeRecorder::Changing, this);
}

ChangeRecorder::~ChangeRecorder()
{
    sqlite3_preupdate_hook(database_.getHandle(), nullptr, nullptr);
}

ChangeRecorder::OnlyPlaces::OnlyPlaces(SQLite::Database &database)
    : recorder_(static_cast<ChangeRecorder *>(sqlite3_preupdate_hook(database.getHandle(), nullptr, nullptr)))
{
    if (!recorder_)
        return;
    sqlite3_preupdate_hook(database.getHandle(), &ChangeRecorder::Changing, recorder_);
    recorder_->onlyPlaces_ = true;
}

ChangeRecorder::OnlyPlaces::~OnlyPlaces()
{
    if (recorder_)
        recorder_->onlyPlaces_ = false;
}

// The engine is in the midst of a statement: nothing may be thrown through it.
void ChangeRecorder::Changing(void *recorder, sqlite3 *database, int kind, const char *schema,
                              const char *table, long long rowBefore, long long rowAfter)
{
    if (sqlite3_stricmp(schema, "main") != 0 || sqlite3_stricmp(table, "Lernkarten") != 0)
        return;
    auto &self = *static_cast<ChangeRecorder *>(recorder);
    try {
        if (self.into_.IsEmpty())
            self.first_();
        self.Note(database, kind, kind == SQLITE_INSERT ? rowAfter : rowBefore);
        // No statement of the program gives a card another row.
        if (kind == SQLITE_UPDATE && rowBefore != rowAfter)
            self.into_.SetIncomplete();
    } catch (const std::exception &) { // no memory
        self.into_.SetIncomplete();
    }
}

void ChangeRecorder::Note(sqlite3 *database, int kind, long long row)
{
    CardChanges::Row changed;
    changed.id = row;
    if (kind == SQLITE_INSERT) {
        into_.Add(changed);
        return;
    }
    const bool deleted = kind == SQLITE_DELETE;
    changed.kind = deleted ? CardChanges::Kind::Deleted : CardChanges::Kind::Changed;
    for (const int column : onlyPlaces_ && !deleted ? places_ : all_) {
        sqlite3_value *before = nullptr;
        sqlite3_value *after = nullptr;
        if (sqlite3_preupdate_old(database, column, &before) != SQLITE_OK ||
            (!deleted && sqlite3_preupdate_new(database, column, &after) != SQLITE_OK)) {
            into_.SetIncomplete();
            return;
        }
        if (deleted || !IsSame(before, after))
            changed.before.push_back({column, Copy(before)});
    }
    if (deleted || !changed.before.empty())
        into_.Add(changed);
}

} // namespace paukfix
