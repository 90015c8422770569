// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Opening a card file with the box in sight, which fills while its cards are counted, beside opening it
// unseen: the difference is what the redraws cost. Without a display it paints into memory.
#include "BigBox.h"
#include "BoxRechnung.h"
#include "KarteiOeffner.h"
#include "Kasten.h"

#include <QApplication>
#include <benchmark/benchmark.h>

using namespace paukfix;

namespace {

void OpenUnseen(benchmark::State &state)
{
    StillMeldungen meldungen;
    const HastyClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    OpenAgainAndAgain(state, store, oeffner);
}

void OpenInSight(benchmark::State &state)
{
    StillMeldungen meldungen;
    const HastyClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    Kasten kasten(store.FachInfo);
    kasten.resize(980, 540);
    kasten.show();
    int pictures = 0;
    oeffner.BoxZeichnen = [&] {
        ++pictures;
        kasten.ZeigenLaufend(BoxRechnen(store.FachInfo));
    };
    OpenAgainAndAgain(state, store, oeffner);
    state.counters["asked for"] = benchmark::Counter(pictures, benchmark::Counter::kAvgIterations);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::RegisterBenchmark("Floor/OpenUnseen", OpenUnseen)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Box/OpenInSight", OpenInSight)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
