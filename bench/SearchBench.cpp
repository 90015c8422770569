// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// The card search for a word on the last of 32,767 cards beside plain SQLite that reads the same columns of
// the same cards in the same order, without looking into them.
#include "CardFile.h"
#include "CardStore.h"
#include "Kartensuche.h"

#include <QTemporaryDir>
#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

namespace {

constexpr int cardCount = 32767;

QString Words(int seed, int words)
{
    static const QStringList stock{
        QStringLiteral("der"),    QStringLiteral("Fluß"),    QStringLiteral("Übung"),
        QStringLiteral("macht"),  QStringLiteral("Meister"), QStringLiteral("und"),
        QStringLiteral("lernt"),  QStringLiteral("täglich"), QStringLiteral("Karten"),
        QStringLiteral("Brücke"), QStringLiteral("schnell")};
    QString text;
    for (int i = 0; i < words; ++i)
        text += stock[(seed * 7 + i * i * 3 + i) % stock.size()] + u' ';
    return text;
}

QString Rtf(const QString &plain)
{
    return QStringLiteral(R"({\rtf1\ansi{\fonttbl{\f0\fnil Arial;}}\pard\f0\fs20 %1\par})").arg(plain);
}

struct BigFile
{
    BigFile()
    {
        const QString path = directory.filePath(name);
        CardFile::Create(path);
        CardFile file(path);
        CardRecordset cards(file);
        cards.BeginTrans();
        for (int i = 1; i <= cardCount; ++i) {
            CardRecord card;
            card.FrageNr = i;
            card.FachNr = static_cast<int>(i * 6 / cardCount);
            card.FachLfdNr = i;
            card.Antworttyp = i % 5 == 0 ? 2 : 1;
            card.Picture_9_Name = Words(i % 40, 2);
            card.Frage_Klartext = Words(i, 12) + (i == cardCount ? QStringLiteral("Nadel") : QString());
            card.Frage = Rtf(card.Frage_Klartext);
            card.Antwort_1_Klartext = Words(i + 5, 6);
            card.Antwort_1 = Rtf(card.Antwort_1_Klartext);
            card.Antwort_2_Klartext = Words(i + 6, 6);
            card.Antwort_2 = Rtf(card.Antwort_2_Klartext);
            cards.AddNew();
            cards.Write(card);
            cards.Update();
        }
        cards.CommitTrans();
    }

    QTemporaryDir directory;
    QString name = QStringLiteral("gross.pzb");
};

const BigFile &File()
{
    static const BigFile file;
    return file;
}

class StillMeldungen final : public Meldungen
{
public:
    void Zeigen(const QString &, Symbol) override {}

    Antwort Fragen(const QString &, Antwort) override { return Antwort::Nein; }

    void Sanduhr(bool) override {}
};

// Its second is over at once.
class EiligeUhr final : public Uhr
{
public:
    qint64 Sekunde() const override { return ++readings_; }

    QDateTime Jetzt() const override { return {}; }

private:
    mutable qint64 readings_ = 0;
};

void SearchLastCard(benchmark::State &state)
{
    StillMeldungen meldungen;
    const EiligeUhr uhr;
    CardStore store(meldungen, uhr);
    store.KarteiPfad = File().directory.path();
    QString name = File().name;
    store.OpenCardFile(name);
    for (auto _ : state) {
        store.Karten().MoveFirst();
        SearchHit hit;
        if (KarteSuchen(store, hit, QStringLiteral("nadel")) != Suchergebnis::Gefunden)
            state.SkipWithError("not found");
    }
}

void FloorScan(benchmark::State &state)
{
    SQLite::Database database(File().directory.filePath(File().name).toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT");
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
