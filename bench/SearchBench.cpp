// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// The card search for a word on the last of 32,767 cards beside plain SQLite that reads the same columns of
// the same cards in the same order, without looking into them.
#include "BigBox.h"
#include "KarteiOeffner.h"
#include "Kartensuche.h"

#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

using namespace paukfix;

namespace {

// Each question of the big box ends in a number; this one's card is the last of the last compartment.
const QString needle = QString::number(CardCount - 1);

void SearchLastCard(benchmark::State &state)
{
    StillMeldungen meldungen;
    const HastyClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    store.KarteiPfad = BigFile().section(u'/', 0, -2);
    QString name = BigFile().section(u'/', -1);
    oeffner.OpenCardFile(name);
    for (auto _ : state) {
        store.Karten().MoveFirst();
        SearchHit hit;
        if (KarteSuchen(store, hit, needle) != Suchergebnis::Gefunden)
            state.SkipWithError("not found");
    }
}

void FloorScan(benchmark::State &state)
{
    SQLite::Database database = OpenFloor();
    for (auto _ : state) {
        SQLite::Statement walk(
            database, "SELECT FrageNr, Antworttyp, Picture_9_Name, Frage_Klartext, Antwort_1_Klartext, "
                      "Antwort_2_Klartext, Antwort_3_Klartext, Antwort_4_Klartext, Antwort_5_Klartext "
                      "FROM Lernkarten INDEXED BY BoxKey ORDER BY FachNr, FachLfdNr");
        double sum = 0;
        while (walk.executeStep()) {
            sum += walk.getColumn(0).getDouble();
            const int columns = walk.getColumn(1).getDouble() == 2 ? 9 : 5;
            for (int i = 2; i < columns; ++i) {
                const char *text = walk.getColumn(i).getText();
                sum += text[0] + walk.getColumn(i).getBytes();
            }
        }
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(FloorScan)->Name("Floor/Search")->Unit(benchmark::kMillisecond);
BENCHMARK(SearchLastCard)->Name("Search/LastCard")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
