// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// The topic field of the editor on a box of 32,767 cards of as many topics, beside plain SQLite that reads
// these topics: the list when the keyboard comes to the field, and each key in it, painted.
#include "BigBox.h"
#include "CardFacts.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "Themenzeile.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

using namespace paukfix;

namespace {

const QString &TopicFile()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        QList<CardRecord> cards;
        for (int i = 1; i <= CardCount; ++i) {
            cards << MakeCard(i, i % 6, i);
            cards.back().Picture_9_Name = QString("Thema %1 von vielen").arg(i);
        }
        QString file = folder.filePath("themen.pzb");
        MakeCardFile(file, cards);
        return file;
    }();
    return path;
}

void FloorTopics(benchmark::State &state)
{
    SQLite::Database database = OpenFloor(TopicFile());
    for (auto _ : state) {
        SQLite::Statement walk(database, "SELECT DISTINCT Picture_9_Name FROM Lernkarten");
        int sum = 0;
        while (walk.executeStep())
            sum += walk.getColumn(0).getBytes();
        benchmark::DoNotOptimize(sum);
    }
}

// The field in the editor's place, on an open box.
struct Field
{
    Field() : opener(store, messages, clock), line(nullptr)
    {
        store.KarteiPfad = TopicFile().section(u'/', 0, -2);
        QString name = TopicFile().section(u'/', -1);
        opener.OpenCardFile(name);
        line.themen = [this] { return Topics(store.Karten()); };
        line.show();
        QCoreApplication::processEvents();
    }

    void Key(int key, const QString &text = {})
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&line, &press);
        QCoreApplication::processEvents();
    }

    StillMeldungen messages;
    HastyClock clock;
    CardStore store;
    KarteiOeffner opener;
    Themenzeile line;
};

void KeyboardComes(benchmark::State &state)
{
    Field field;
    for (auto _ : state) {
        QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
        QCoreApplication::sendEvent(&field.line, &in);
    }
}

// `text` is there already; one more key, which some or all topics go on with, and back.
void EachKey(benchmark::State &state, const QString &text, const QString &key)
{
    Field field;
    field.line.activateWindow();
    field.line.setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    field.line.setText(text);
    for (auto _ : state) {
        field.Key(key.front().toUpper().unicode(), key);
        state.PauseTiming();
        field.Key(Qt::Key_Backspace);
        state.ResumeTiming();
    }
}

BENCHMARK(FloorTopics)->Name("Floor/Topics")->Unit(benchmark::kMillisecond);
BENCHMARK(KeyboardComes)->Name("Topics/KeyboardComes")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EachKey, all, QString(), QString("t"))
    ->Name("Topics/KeyAllMatch")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EachKey, some, QString("Thema 12"), QString("3"))
    ->Name("Topics/KeySomeMatch")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EachKey, none, QString("Thema 12"), QString("x"))
    ->Name("Topics/KeyNoneMatch")
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
