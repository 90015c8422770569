// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The card store beside plain SQLite doing the same rows in the same run, and on a file whose pages have no
// sums. Read the ratios, not the times: a case named "Store/X" stands against "Floor/X" and "NoSums/X".
#include "BigBox.h"
#include "CardFile.h"
#include "CardRecordset.h"
#include "KarteEinordnen.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"

#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// The big box in the format from before the sums.
const QString &FormerBigFile()
{
    static const QString path = [] {
        QString name = BigFile() + u".ohne.pzb"_s;
        MakeEmptyCardFile(name, 4096, false);
        CardFile file(name);
        file.Database().exec("ATTACH '" + BigFile().toStdString() +
                             "' AS big; INSERT INTO main.Lernkarten SELECT * FROM big.Lernkarten "
                             "ORDER BY _rowid_; DETACH big");
        return name;
    }();
    return path;
}

const QString &FileWith(bool sums)
{
    return sums ? BigFile() : FormerBigFile();
}

void StoreOpen(benchmark::State &state, bool sums)
{
    const QString &path = FileWith(sums);
    StillMeldungen meldungen;
    const HastyClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    OpenAgainAndAgain(state, store, oeffner, path);
}

void FloorOpen(benchmark::State &state)
{
    BigFile();
    for (auto _ : state) {
        SQLite::Database database = OpenFloor();
        SQLite::Statement walk(database,
                               "SELECT FrageNr, FachNr, FachLfdNr FROM Lernkarten INDEXED BY BoxKey "
                               "ORDER BY FachNr, FachLfdNr");
        double sum = 0;
        while (walk.executeStep())
            sum +=
                walk.getColumn(0).getDouble() + walk.getColumn(1).getDouble() + walk.getColumn(2).getDouble();
        benchmark::DoNotOptimize(sum);
    }
}

void StoreWalk(benchmark::State &state, bool sums)
{
    CardFile file(FileWith(sums));
    CardRecordset cards(file);
    cards.SetIndex(u"BoxKey");
    std::array<Field, 5> fields{cards[u"Picture_9_Name"], cards[u"Frage"], cards[u"Frage_Klartext"],
                                cards[u"Antwort_1"], cards[u"Antwort_1_Klartext"]};
    for (auto _ : state) {
        qsizetype sum = 0;
        for (cards.MoveFirst(); !cards.AtEOF(); cards.MoveNext())
            for (const Field &field : fields)
                sum += field.Text().size();
        benchmark::DoNotOptimize(sum);
    }
}

void FloorWalk(benchmark::State &state)
{
    BigFile();
    SQLite::Database database = OpenFloor();
    for (auto _ : state) {
        SQLite::Statement walk(database,
                               "SELECT Picture_9_Name, Frage, Frage_Klartext, Antwort_1, Antwort_1_Klartext "
                               "FROM Lernkarten INDEXED BY BoxKey ORDER BY FachNr, FachLfdNr");
        qsizetype sum = 0;
        while (walk.executeStep())
            for (int i = 0; i < 5; ++i) {
                const SQLite::Column column = walk.getColumn(i);
                sum += QString::fromUtf8(column.getText(), column.getBytes()).size();
            }
        benchmark::DoNotOptimize(sum);
    }
}

void StoreSeekAndRead(benchmark::State &state, bool sums)
{
    CardFile file(FileWith(sums));
    CardRecordset cards(file);
    cards.SetIndex(u"FrageNr");
    int number = 1;
    for (auto _ : state) {
        number = number * 31 % CardCount + 1;
        cards.Seek(CardRecordset::Comparison::Equal, number);
        benchmark::DoNotOptimize(cards.Read());
    }
}

void FloorSeekAndRead(benchmark::State &state)
{
    BigFile();
    SQLite::Database database = OpenFloor();
    SQLite::Statement one(database, "SELECT * FROM Lernkarten WHERE FrageNr=?1");
    int number = 1;
    for (auto _ : state) {
        number = number * 31 % CardCount + 1;
        one.reset();
        one.bind(1, number);
        qsizetype sum = one.executeStep() ? 1 : 0;
        for (int i = 0; i < CardColumnCount; ++i) {
            const SQLite::Column column = one.getColumn(i);
            sum += column.isText() ? QString::fromUtf8(column.getText(), column.getBytes()).size()
                                   : column.getInt();
        }
        benchmark::DoNotOptimize(sum);
    }
}

// An answer: the first card of a compartment goes to the back of the queue, durably.
void StoreAnswer(benchmark::State &state, bool sums)
{
    CardFile file(FileWith(sums));
    CardRecordset cards(file);
    cards.SetIndex(u"BoxKey");
    Field fachNr = cards[u"FachNr"];
    Field fachLfdNr = cards[u"FachLfdNr"];
    static int last = 10000;
    for (auto _ : state) {
        cards.Seek(CardRecordset::Comparison::AtLeast, 3);
        cards.Edit();
        fachNr.Set(3);
        fachLfdNr.Set(++last);
        cards.Update();
    }
}

void FloorAnswer(benchmark::State &state)
{
    BigFile();
    SQLite::Database database = OpenFloor();
    SQLite::Statement first(database,
                            "SELECT rowid FROM Lernkarten WHERE FachNr=4 ORDER BY FachLfdNr LIMIT 1");
    SQLite::Statement move(database, "UPDATE Lernkarten SET FachNr=4, FachLfdNr=?1 WHERE rowid=?2");
    static int last = 10000;
    for (auto _ : state) {
        first.reset();
        if (!first.executeStep())
            state.SkipWithError("no card");
        const std::int64_t row = first.getColumn(0).getInt64();
        first.reset();
        move.reset();
        move.bind(1, ++last);
        move.bind(2, row);
        move.exec();
    }
}

// An answer in the open box, with counts and history, or taking it back: each is measured while the other is
// done beside the clock.
void StoreVerdict(benchmark::State &state, bool back)
{
    CardStore store;
    store.Uebernehmen(std::make_unique<CardFile>(BigFile()));
    store.FachInfo.Zaehlen(store.Karten());
    for (auto _ : state) {
        if (back)
            state.PauseTiming();
        store.Karten().Seek(CardRecordset::Comparison::AtLeast, 2);
        KarteEinordnen(store, Gefragt(store), true);
        if (back)
            state.ResumeTiming();
        else
            state.PauseTiming();
        store.schritte.Zuruecknehmen();
        if (!back)
            state.ResumeTiming();
    }
}

BENCHMARK(FloorOpen)->Name("Floor/Open")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StoreOpen, sums, true)->Name("Store/Open")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StoreOpen, noSums, false)->Name("NoSums/Open")->Unit(benchmark::kMillisecond);
BENCHMARK(FloorWalk)->Name("Floor/Walk")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StoreWalk, sums, true)->Name("Store/Walk")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StoreWalk, noSums, false)->Name("NoSums/Walk")->Unit(benchmark::kMillisecond);
BENCHMARK(FloorSeekAndRead)->Name("Floor/SeekAndRead")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(StoreSeekAndRead, sums, true)->Name("Store/SeekAndRead")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(StoreSeekAndRead, noSums, false)->Name("NoSums/SeekAndRead")->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorAnswer)->Name("Floor/Answer")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK_CAPTURE(StoreAnswer, sums, true)
    ->Name("Store/Answer")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(StoreAnswer, noSums, false)
    ->Name("NoSums/Answer")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(StoreVerdict, give, false)
    ->Name("Store/Verdict")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(StoreVerdict, back, true)
    ->Name("Store/VerdictBack")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
