// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EngineReader.h"

#include "CardFile.h"
#include "CardValue.h"
#include "EngineLocks.h"
#include "PageSums.h"

#include <QFile>
#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <unordered_set>

namespace paukfix {

namespace {

// Rounds of 10,000 engine instructions after which a statement ends; a damaged tree can lead in circles.
constexpr int MostRounds = 10'000;
constexpr std::size_t MostRows = 200'000;

int CountRound(void *rounds)
{
    return ++*static_cast<int *>(rounds) > MostRounds ? 1 : 0;
}

// Gives every statement its own time.
class RoundLimit
{
public:
    explicit RoundLimit(SQLite::Database &database) : handle_(database.getHandle())
    {
        sqlite3_progress_handler(handle_, 10'000, CountRound, &rounds_);
    }

    RoundLimit(const RoundLimit &) = delete;
    RoundLimit &operator=(const RoundLimit &) = delete;

    ~RoundLimit() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }

private:
    sqlite3 *handle_;
    int rounds_ = 0;
};

SalvagedCard::Value ValueOf(const SQLite::Column &column, bool isText)
{
    if (column.isNull())
        return {};
    if (!isText)
        return column.isText() || column.isBlob() ? SalvagedCard::Value() : column.getDouble();
    const char *text = column.getText();
    return QByteArray(text, column.getBytes());
}

} // namespace

EngineReader::EngineReader(const QString &path, Access access)
{
    UseOpenFileLocks();
    UsePageSums();
    try {
        const std::string uri =
            ("file:" + QFile::encodeName(path).toPercentEncoding("/") + '?' + SumsIgnored).toStdString();
        if (access == Access::ReadOnly) // "immutable": neither locks nor journals are looked at
            database_ = std::make_unique<SQLite::Database>(uri + "&mode=ro&immutable=1",
                                                           SQLite::OPEN_READONLY | SQLite::OPEN_URI);
        else
            database_ = std::make_unique<SQLite::Database>(uri, SQLite::OPEN_READWRITE | SQLite::OPEN_URI);
        const RoundLimit limit(*database_);
        Distrust(*database_);
        PrepareReading();
    } catch (const SQLite::Exception &) {
        row_.reset();
        return;
    }
    ReadRows("ASC");
    ReadRows("DESC");
}

void EngineReader::PrepareReading()
{
    columns_.fill(-1);
    SQLite::Statement info(*database_, "SELECT name FROM pragma_table_info('Lernkarten')");
    std::string sql;
    int count = 0;
    while (info.executeStep()) {
        const int column = CardColumnIndex(QString::fromUtf8(info.getColumn(0).getText()));
        if (column < 0)
            continue;
        columns_[static_cast<std::size_t>(column)] = count++;
        sql += std::string(sql.empty() ? "" : ",") + '"' +
               CardColumns()[static_cast<std::size_t>(column)].name + '"';
    }
    row_ = std::make_unique<SQLite::Statement>(*database_, "SELECT " + sql +
                                                               " FROM Lernkarten NOT INDEXED WHERE rowid=?");
}

void EngineReader::ReadRows(const char *order)
{
    std::unordered_set<std::int64_t> known;
    for (const CardCell &card : cards_)
        known.insert(card.rowid);
    try {
        const RoundLimit limit(*database_);
        SQLite::Statement rows(
            *database_, std::string("SELECT rowid,\"FrageNr\",\"FachNr\",\"FachLfdNr\" FROM Lernkarten "
                                    "NOT INDEXED ORDER BY rowid ") +
                            order);
        while (rows.executeStep() && cards_.size() < MostRows) {
            CardCell card;
            card.rowid = rows.getColumn(0).getInt64();
            double *const keys[] = {&card.number, &card.compartment, &card.place};
            for (int i = 0; i < 3; ++i)
                if (const auto column = rows.getColumn(i + 1); column.isInteger() || column.isFloat())
                    *keys[i] = column.getDouble();
            card.whole = card.reached = true;
            if (!known.insert(card.rowid).second)
                return; // met what came from the other side, or the damaged tree leads in circles
            cards_.push_back(card);
        }
    } catch (const SQLite::Exception &) {
        return; // here is the damage
    }
}

std::optional<SalvagedCard> EngineReader::Read(std::int64_t rowid)
{
    try {
        const RoundLimit limit(*database_);
        row_->reset();
        row_->bind(1, static_cast<int64_t>(rowid));
        if (!row_->executeStep())
            return std::nullopt;
        SalvagedCard card;
        for (int i = 0; i < CardColumnCount; ++i)
            if (const int column = columns_[static_cast<std::size_t>(i)]; column >= 0)
                card.values[static_cast<std::size_t>(i)] =
                    ValueOf(row_->getColumn(column), KindOf(i) == CardKind::Text);
        return card;
    } catch (const SQLite::Exception &) {
        return std::nullopt;
    }
}

bool EngineReader::FindsNoFault()
{
    if (!row_)
        return false;
    try {
        return database_->execAndGet("PRAGMA integrity_check(1)").getString() == "ok";
    } catch (const SQLite::Exception &) {
        return false;
    }
}

} // namespace paukfix
