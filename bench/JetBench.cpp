// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The conversion of a card file of the former database engine beside the writing of as many cards through the
// store. Read the ratio, not the times.
#include "CardFile.h"
#include "CardRecordset.h"
#include "JetConversion.h"
#include "JetLab.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr int CardCount = 5000;

// Texts of usual length.
QList<CardRecord> Cards()
{
    QList<CardRecord> cards;
    for (int i = 1; i <= CardCount; ++i) {
        CardRecord card = MakeCard(i, i % 7, i / 7 + 1);
        card.Frage_Klartext = u"Wie heißt die Übung Nummer %1 auf Englisch? "_s.arg(i).repeated(2);
        card.Frage =
            uR"({\rtf1\ansi\ansicpg1252\deff0\deflang1031{\fonttbl{\f0\fnil\fcharset0 Arial;}}\pard %1\par})"_s
                .arg(card.Frage_Klartext);
        card.Antwort_1 = card.Frage;
        cards << card;
    }
    return cards;
}

void Clear(const QTemporaryDir &directory)
{
    for (const QString &name : QDir(directory.path()).entryList(QDir::Files | QDir::Hidden))
        QFile::remove(directory.filePath(name));
}

void FloorWrite(benchmark::State &state)
{
    const QTemporaryDir directory;
    const QList<CardRecord> cards = Cards();
    for (auto _ : state) {
        MakeCardFile(directory.filePath("neu.pzb"), cards);
        state.PauseTiming();
        Clear(directory);
        state.ResumeTiming();
    }
}

void StoreConvert(benchmark::State &state)
{
    const QTemporaryDir directory;
    JetLab lab(static_cast<int>(state.range(0)));
    for (const CardRecord &card : Cards())
        lab.Add(card);
    lab.mapType = 1;
    const QByteArray old = lab.Bytes();
    const QString path = directory.filePath("alt.pzb");
    for (auto _ : state) {
        state.PauseTiming();
        Clear(directory);
        WriteFileSynced(path, old);
        state.ResumeTiming();
        if (!ConvertJetFile(path).isEmpty())
            state.SkipWithError("not every card is as it was");
    }
}

BENCHMARK(FloorWrite)->Name("Floor/Write")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(StoreConvert)->Name("Store/Convert")->Arg(3)->Arg(4)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
