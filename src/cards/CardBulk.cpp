// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardBulk.h"

#include "CardValue.h"
#include "ChangeRecorder.h"
#include "FachNummern.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Highest16 = std::numeric_limits<qint16>::max();
// Added to running numbers it leads out of the way of all 16-bit ones.
constexpr int StepAside = 1 << 17;

// A card's row and its place in the order in which it was found, from 0.
struct Row
{
    std::int64_t id = 0;
    int place = 0;
};

using Rows = std::vector<Row>;

// The rows in the order in which they lie in the file: written so, each page is touched once.
Rows FindRows(SQLite::Statement &statement)
{
    Rows rows;
    while (statement.executeStep())
        rows.push_back({statement.getColumn(0).getInt64(), static_cast<int>(rows.size())});
    std::sort(rows.begin(), rows.end(), [](const Row &one, const Row &other) { return one.id < other.id; });
    return rows;
}

Rows FindRows(SQLite::Database &database, const char *sql)
{
    SQLite::Statement statement(database, sql);
    return FindRows(statement);
}

int Count(const Rows &rows)
{
    return static_cast<int>(rows.size());
}

// The rows were found before the first of them is written: no change of the order can lead past one.
void WriteRows(SQLite::Database &database, const char *sql, const Rows &rows, const Progress &progress,
               const std::function<void(SQLite::Statement &, int place)> &bind = {})
{
    SQLite::Statement statement(database, sql);
    int done = 0;
    for (const Row &row : rows) {
        statement.bind(1, row.id);
        if (bind)
            bind(statement, row.place);
        statement.exec();
        statement.reset();
        Melden(progress, ++done, Count(rows));
    }
}

void CheckFits(std::int64_t lfdNr)
{
    if (lfdNr > Highest16)
        throw StoreError(Fehler::Ueberlauf, u"Überlauf: Ein Fach fasst nicht mehr als 32767 Karten."_s);
}

} // namespace

int CloseUpCompartment(SQLite::Database &database, int fachNr, std::optional<double> zuletzt)
{
    const ChangeRecorder::OnlyPlaces places(database);
    SQLite::Statement away(database,
                           R"(UPDATE "Lernkarten" SET "FachLfdNr"="FachLfdNr"+?1 WHERE "FachNr"=?2)");
    away.bind(1, StepAside);
    away.bind(2, fachNr);
    away.exec();

    // Without a number to come last, ?2 is null and both comparisons hold for no card.
    SQLite::Statement find(database, R"(SELECT _rowid_ FROM "Lernkarten" WHERE "FachNr"=?1 OR "FrageNr"=?2 )"
                                     R"(ORDER BY "FrageNr" IS ?2,"FachLfdNr")");
    find.bind(1, fachNr);
    if (zuletzt)
        find.bind(2, *zuletzt);
    const Rows rows = FindRows(find);
    CheckFits(Count(rows));
    WriteRows(database, R"(UPDATE "Lernkarten" SET "FachNr"=?3,"FachLfdNr"=?2 WHERE _rowid_=?1)", rows, {},
              [fachNr](SQLite::Statement &statement, int place) {
                  statement.bind(2, place + 1);
                  statement.bind(3, fachNr);
              });
    return Count(rows);
}

BoxState StateOfBox(CardRecordset &cards)
{
    BoxState state{};
    cards.Beside([&](SQLite::Database &database) {
        SQLite::Statement count(database,
                                R"(SELECT count(*),total("FachNr"),total("FachLfdNr") FROM "Lernkarten")");
        count.executeStep();
        for (std::size_t i = 0; i < state.size(); ++i)
            state[i] = count.getColumn(static_cast<int>(i)).getDouble();
    });
    return state;
}

int MoveAllToNew(CardRecordset &cards, const Progress &progress)
{
    int moved = 0;
    cards.Past([&](SQLite::Database &database) {
        const ChangeRecorder::OnlyPlaces places(database);
        const Rows rows =
            FindRows(database, R"(SELECT _rowid_ FROM "Lernkarten" INDEXED BY "FrageNr" ORDER BY "FrageNr")");
        CheckFits(Count(rows));
        // No card meets another's pair of compartment and running number on the way.
        SQLite::Statement away(database,
                               R"(UPDATE "Lernkarten" SET "FachLfdNr"="FachLfdNr"+?1 WHERE "FachNr"=0)");
        away.bind(1, StepAside);
        away.exec();
        WriteRows(database, R"(UPDATE "Lernkarten" SET "FachNr"=0,"FachLfdNr"=?2 WHERE _rowid_=?1)", rows,
                  progress, [](SQLite::Statement &statement, int place) { statement.bind(2, place + 1); });
        moved = Count(rows);
    });
    return moved;
}

int MoveDoneToNew(CardRecordset &cards, int lfdMax, const Progress &progress)
{
    int moved = 0;
    cards.Past([&](SQLite::Database &database) {
        const Rows rows =
            FindRows(database, R"(SELECT _rowid_ FROM "Lernkarten" WHERE "FachNr"=6 ORDER BY "FachLfdNr")");
        if (lfdMax + static_cast<std::int64_t>(rows.size()) > Highest16)
            lfdMax = CloseUpCompartment(database, FachNeu);
        const ChangeRecorder::OnlyPlaces places(database);
        CheckFits(lfdMax + static_cast<std::int64_t>(rows.size()));
        WriteRows(database, R"(UPDATE "Lernkarten" SET "FachNr"=0,"FachLfdNr"=?2 WHERE _rowid_=?1)", rows,
                  progress,
                  [&](SQLite::Statement &statement, int place) { statement.bind(2, lfdMax + place + 1); });
        moved = Count(rows);
    });
    return moved;
}

int SwapQuestionAndAnswer(CardRecordset &cards, const Progress &progress)
{
    int swapped = 0;
    cards.Past([&](SQLite::Database &database) {
        const Rows rows = FindRows(database, R"(SELECT _rowid_ FROM "Lernkarten" WHERE "Antworttyp"=1)");
        WriteRows(database,
                  R"(UPDATE "Lernkarten" SET "Frage"="Antwort_1","Frage_Klartext"="Antwort_1_Klartext",)"
                  R"("Antwort_1"="Frage","Antwort_1_Klartext"="Frage_Klartext" WHERE _rowid_=?1)",
                  rows, progress);
        swapped = Count(rows);
    });
    return swapped;
}

int DeleteByTopic(CardRecordset &cards, const std::function<bool(const QString &topic)> &keep,
                  const Progress &progress)
{
    int deleted = 0;
    cards.Past([&](SQLite::Database &database) {
        Rows rows;
        SQLite::Statement find(database, R"(SELECT _rowid_,"Picture_9_Name" FROM "Lernkarten")");
        static const int topicColumn = CardColumnIndex(u"Picture_9_Name");
        while (find.executeStep())
            if (!keep(FromEngine(find.getColumn(1), topicColumn).toString()))
                rows.push_back({find.getColumn(0).getInt64(), Count(rows)});
        WriteRows(database, R"(DELETE FROM "Lernkarten" WHERE _rowid_=?1)", rows, progress);
        deleted = Count(rows);
    });
    return deleted;
}

} // namespace paukfix
