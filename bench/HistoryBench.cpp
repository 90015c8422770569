// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// A year's history: painted, beside the same number of rectangles and one picture filled; noted after an
// answer, beside an answer; the print of a big box. Paints into memory.
#include "BigBox.h"
#include "CardFile.h"
#include "Diagramm.h"
#include "Hausfarben.h"
#include "KarteEinordnen.h"
#include "Verlaufsbuch.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize Bild(1044, 272); // each of the two pictures of the window

Verlaufswerte Jahr()
{
    const QDate heute(2026, 11, 21);
    std::vector<Tagesstand> tage;
    for (int i = 364; i >= 0; --i)
        tage.push_back(
            {heute.addDays(-i), 8 + i % 20, i % 7, {100 + i, 30 + i % 9, 60, 80, 90 - i % 5, 100, 400 - i}});
    return Auswerten(tage, Zeitraum::Alles, heute);
}

void PaintYear(benchmark::State &state)
{
    Antwortbild antworten(nullptr);
    Faecherbild faecher(nullptr);
    const double factor = static_cast<double>(state.range(0));
    QImage bild(Bild * factor, QImage::Format_ARGB32_Premultiplied);
    bild.setDevicePixelRatio(factor);
    for (Diagramm *diagramm : {static_cast<Diagramm *>(&antworten), static_cast<Diagramm *>(&faecher)}) {
        diagramm->resize(Bild);
        diagramm->Zeigen(Jahr());
    }
    for (auto _ : state) {
        antworten.render(&bild);
        faecher.render(&bild);
    }
}

// Two pictures filled, and a rectangle for each number of the year.
void FloorYear(benchmark::State &state)
{
    const double factor = static_cast<double>(state.range(0));
    QImage bild(Bild * factor, QImage::Format_ARGB32_Premultiplied);
    bild.setDevicePixelRatio(factor);
    for (auto _ : state)
        for (int zwei = 0; zwei < 2; ++zwei) {
            bild.fill(Qt::white);
            QPainter maler(&bild);
            for (int tag = 0; tag < 365; ++tag)
                for (int zahl = 0; zahl < (zwei == 0 ? 2 : 7); ++zahl)
                    maler.fillRect(QRectF(tag * 2.5, zahl * 30, 2, 25), Qt::darkCyan);
        }
}

// Answers as fast as they can be stored; `mit` keeps their history too.
void Antworten(benchmark::State &state, bool mit)
{
    const QTemporaryDir ordner;
    const SystemClock clock;
    CardStore kartei;
    OpenCopy(kartei, ordner.path(), clock);
    Verlaufsbuch buch(kartei, clock, ordner.filePath(u"verlauf.sqlite"_s));
    buch.Nachsehen();
    for (auto _ : state) {
        kartei.Karten().Seek(CardRecordset::Comparison::AtLeast, 1);
        KarteEinordnen(kartei, Gefragt(kartei), false);
        if (mit) {
            buch.Nachsehen();
            QCoreApplication::processEvents();
        }
    }
}

void FloorAnswer(benchmark::State &state)
{
    Antworten(state, false);
}

void HistoryAnswer(benchmark::State &state)
{
    Antworten(state, true);
}

void HistoryPrint(benchmark::State &state)
{
    CardFile datei(BigFile());
    CardRecordset karten(datei);
    for (auto _ : state)
        benchmark::DoNotOptimize(Kartenabdruck(karten));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("Floor/Year", FloorYear)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("History/Year", PaintYear)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("Floor/Answer", FloorAnswer)->Unit(benchmark::kMillisecond)->UseRealTime();
    RegisterBenchmark("History/Answer", HistoryAnswer)->Unit(benchmark::kMillisecond)->UseRealTime();
    RegisterBenchmark("History/Print", HistoryPrint)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
