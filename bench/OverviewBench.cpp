// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The overview on a full box, in a real window: until its first rows are painted, a page further, sorted, and
// until a search through all cards has ended. Plain SQLite reading the numbers and texts of all cards once
// stands beside it.
#include "AppConfig.h"
#include "BigBox.h"
#include "Dialoge.h"
#include "KarteiOeffner.h"
#include "Uebersicht.h"

#include <QApplication>
#include <QLineEdit>
#include <QPrinter>
#include <QScrollBar>
#include <QTableView>
#include <SQLiteCpp/Statement.h>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Says when its object was painted.
class PaintWatch final : public QObject
{
public:
    explicit PaintWatch(QObject *watched) { watched->installEventFilter(this); }

    void Wait()
    {
        while (!painted_)
            QCoreApplication::processEvents();
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }

private:
    bool painted_ = false;
};

class StillTon final : public Ton
{
public:
    void Spielen(const QString &) override {}

    void Stille() override {}
};

struct Desk
{
    Desk()
    {
        QString name = BigFile().section(u'/', -1);
        store.KarteiPfad = BigFile().section(u'/', 0, -2);
        oeffner.OpenCardFile(name);
    }

    std::unique_ptr<Uebersicht> Open()
    {
        auto window = std::make_unique<Uebersicht>(
            store, Dienste{messages, dialogs, clock, chance, sound, config},
            UebersichtWege{.bearbeiten = [] {}, .drucker = [] { return std::unique_ptr<QPrinter>(); }});
        window->show();
        PaintWatch(window->findChild<QTableView *>()->viewport()).Wait();
        return window;
    }

    StillMeldungen messages;
    HastyClock clock;
    DialogeFenster dialogs;
    MersenneZufall chance;
    StillTon sound;
    AppConfig config{messages};
    CardStore store;
    KarteiOeffner oeffner{store, messages, clock};
};

void FloorReadAll(benchmark::State &state)
{
    for (auto _ : state) {
        SQLite::Database database = OpenFloor();
        SQLite::Statement walk(database, "SELECT FrageNr, FachNr, FachLfdNr, Frage_Klartext, "
                                         "Antwort_1_Klartext FROM Lernkarten");
        int length = 0;
        while (walk.executeStep())
            length += walk.getColumn(3).getBytes() + walk.getColumn(4).getBytes();
        benchmark::DoNotOptimize(length);
    }
}

void OverviewFirstRows(benchmark::State &state)
{
    Desk desk;
    for (auto _ : state)
        benchmark::DoNotOptimize(desk.Open());
}

void OverviewNextPage(benchmark::State &state)
{
    Desk desk;
    const auto window = desk.Open();
    auto *grid = window->findChild<QTableView *>();
    QScrollBar *bar = grid->verticalScrollBar();
    for (auto _ : state) {
        const int next = bar->value() + bar->pageStep();
        bar->setValue(next > bar->maximum() ? 0 : next);
        grid->viewport()->repaint();
    }
}

void OverviewSort(benchmark::State &state)
{
    Desk desk;
    const auto window = desk.Open();
    auto *grid = window->findChild<QTableView *>();
    bool ascending = false;
    for (auto _ : state) {
        ascending = !ascending;
        grid->sortByColumn(static_cast<int>(state.range(0)),
                           ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        grid->viewport()->repaint();
    }
}

void OverviewFindNothing(benchmark::State &state)
{
    Desk desk;
    const auto window = desk.Open();
    auto *field = window->findChild<QLineEdit *>(u"txtSuchen"_s);
    int round = 0;
    for (auto _ : state)
        field->setText(u"steht nirgends %1"_s.arg(++round));
}

BENCHMARK(FloorReadAll)->Name("Floor/ReadAll")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(OverviewFirstRows)->Name("Overview/FirstRows")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(OverviewNextPage)->Name("Overview/NextPage")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(OverviewSort)
    ->Name("Overview/SortColumn")
    ->Arg(0)
    ->Arg(1)
    ->Arg(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(OverviewFindNothing)->Name("Overview/FindNothing")->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
