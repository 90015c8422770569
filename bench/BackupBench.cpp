// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// A big box is backed up: what its learner waits for, and all of it with the check, beside a plain copy of
// the file; the first answer meanwhile, beside one on a machine at rest.
#include "BigBox.h"
#include "CardStore.h"
#include "KarteEinordnen.h"
#include "SafeFile.h"
#include "Sicherungen.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

void FloorCopy(benchmark::State &state)
{
    const QTemporaryDir ordner;
    const QString kopie = ordner.filePath(u"kopie.pzb"_s);
    BigFile();
    for (auto _ : state) {
        CopyFile(BigFile(), kopie);
        SyncFile(kopie);
        state.PauseTiming();
        QFile::remove(kopie);
        state.ResumeTiming();
    }
}

// `ganz`: until the copy is checked, too.
void BackupCopy(benchmark::State &state, bool ganz)
{
    const QTemporaryDir ordner;
    const SystemClock clock;
    BigFile();
    for (auto _ : state) {
        state.PauseTiming();
        QDir(ordner.filePath(u"Sicherungen"_s)).removeRecursively();
        auto sicherungen = std::make_unique<Sicherungen>(ordner.filePath(u"Sicherungen"_s), clock);
        state.ResumeTiming();
        sicherungen->VorEingriff(BigFile(), CardCount);
        if (ganz && sicherungen->Liste(BigFile()).size() != 1)
            state.SkipWithError("no backup");
        state.PauseTiming();
        sicherungen.reset();
        state.ResumeTiming();
    }
}

// The first answer behind the opening, `mit` while the day's backup is being checked.
void FirstAnswer(benchmark::State &state, bool mit)
{
    const QTemporaryDir ordner;
    const SystemClock clock;
    CardStore kartei;
    OpenCopy(kartei, ordner.path(), clock);
    for (auto _ : state) {
        state.PauseTiming();
        QDir(ordner.filePath(u"Sicherungen"_s)).removeRecursively();
        auto sicherungen = std::make_unique<Sicherungen>(ordner.filePath(u"Sicherungen"_s), clock);
        if (mit)
            sicherungen->VorEingriff(kartei.OffenerPfad(), CardCount);
        state.ResumeTiming();
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(kartei, Gefragt(kartei), false);
        state.PauseTiming();
        sicherungen.reset();
        state.ResumeTiming();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    using benchmark::RegisterBenchmark;
    const auto unit = benchmark::kMillisecond;
    RegisterBenchmark("Floor/Copy", FloorCopy)->Unit(unit)->UseRealTime();
    RegisterBenchmark("Backup/LearnerWaits", BackupCopy, false)->Unit(unit)->UseRealTime();
    RegisterBenchmark("Backup/Whole", BackupCopy, true)->Unit(unit)->UseRealTime();
    RegisterBenchmark("Floor/FirstAnswer", FirstAnswer, false)->Unit(unit)->UseRealTime();
    RegisterBenchmark("Backup/FirstAnswer", FirstAnswer, true)->Unit(unit)->UseRealTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
