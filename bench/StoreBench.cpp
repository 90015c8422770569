// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The card store beside plain SQLite doing the same rows in the same run. Read the ratios, not the times: a
// case named "Store/X" stands against "Floor/X".
#include "CardFile.h"
#include "CardRecordset.h"
#include "CardStore.h"

#include <QTemporaryDir>
#include <SQLiteCpp/Database.h>
#include <benchmark/benchmark.h>

namespace {

constexpr int cardCount = 32767;

QString Words(int seed, int words)
{
    static const QStringList stock{
        QStringLiteral("der"),     QStringLiteral("Fluß"),    QStringLiteral("Übung"),
        QStringLiteral("macht"),   QStringLiteral("Meister"), QStringLiteral("und"),
        QStringLiteral("lernt"),   QStringLiteral("täglich"), QStringLiteral("Karten"),
        QStringLiteral("Vokabel"), QStringLiteral("schnell"), QStringLiteral("Brücke")};
    QString text;
    for (int i = 0; i < words; ++i)
        text += stock[(seed * 7 + i * i * 3 + i) % stock.size()] + u' ';
    return text;
}

QString Rtf(const QString &plain)
{
    return QStringLiteral(R"({\rtf1\ansi\ansicpg1252\deff0\deflang1031{\fonttbl{\f0\fnil\fcharset0 Arial;}}
\viewkind4\uc1\pard\f0\fs20 )") +
           plain + QStringLiteral("\\par\r\n}\r\n");
}

// A box of 32,767 cards with texts of usual length, made once.
const QString &BigFile()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        QString name = directory.filePath(QStringLiteral("gross.pzb"));
        CardFile::Create(name);
        CardFile file(name);
        CardRecordset cards(file);
        cards.BeginTrans();
        for (int i = 1; i <= cardCount; ++i) {
            CardRecord card;
            card.FrageNr = (i * 7919) % cardCount + 1;
            card.FachNr = i % 7;
            card.FachLfdNr = (i - i % 7) / 7.0 + 1;
            card.Antworttyp = i % 5 == 0 ? 2 : 1;
            card.Frage_Klartext = Words(i, 12);
            card.Frage = Rtf(card.Frage_Klartext);
            card.Antwort_1_Klartext = Words(i + 5, 6);
            card.Antwort_1 = Rtf(card.Antwort_1_Klartext);
            card.Picture_9_Name = Words(i % 40, 2);
            if (card.Antworttyp == 2) {
                card.Antwort_2_Klartext = Words(i + 6, 6);
                card.Antwort_2 = Rtf(card.Antwort_2_Klartext);
            }
            cards.AddNew();
            cards.Write(card);
            cards.Update();
        }
        cards.CommitTrans();
        return name;
    }();
    return path;
}

class StillMeldungen final : public Meldungen
{
public:
    void Zeigen(const QString &, Symbol) override {}

    Antwort Fragen(const QString &, Antwort) override { return Antwort::Nein; }

    void Sanduhr(bool) override {}
};

// Its second is over at once: what is measured is the opening, not the calibration.
class EiligeUhr final : public Uhr
{
public:
    qint64 Sekunde() const override { return ++readings_; }

    QDateTime Jetzt() const override { return {}; }

private:
    mutable qint64 readings_ = 0;
};

// The database as the store opens it, without the store.
SQLite::Database OpenFloor()
{
    SQLite::Database database(BigFile().toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT; PRAGMA synchronous=EXTRA;"
                  "PRAGMA secure_delete=ON");
    return database;
}

void StoreOpen(benchmark::State &state)
{
    StillMeldungen meldungen;
    const EiligeUhr uhr;
    CardStore store(meldungen, uhr);
    store.KarteiPfad = BigFile().section(u'/', 0, -2);
    for (auto _ : state) {
        QString name = BigFile().section(u'/', -1);
        store.OpenCardFile(name);
        if (name.isEmpty())
            state.SkipWithError("not opened");
        store.CloseCardFile();
    }
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

void StoreWalk(benchmark::State &state)
{
    CardFile file(BigFile());
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

void StoreSeekAndRead(benchmark::State &state)
{
    CardFile file(BigFile());
    CardRecordset cards(file);
    cards.SetIndex(u"FrageNr");
    int number = 1;
    for (auto _ : state) {
        number = number * 31 % cardCount + 1;
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
        number = number * 31 % cardCount + 1;
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
void StoreAnswer(benchmark::State &state)
{
    CardFile file(BigFile());
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

BENCHMARK(FloorOpen)->Name("Floor/Open")->Unit(benchmark::kMillisecond);
BENCHMARK(StoreOpen)->Name("Store/Open")->Unit(benchmark::kMillisecond);
BENCHMARK(FloorWalk)->Name("Floor/Walk")->Unit(benchmark::kMillisecond);
BENCHMARK(StoreWalk)->Name("Store/Walk")->Unit(benchmark::kMillisecond);
BENCHMARK(FloorSeekAndRead)->Name("Floor/SeekAndRead")->Unit(benchmark::kMicrosecond);
BENCHMARK(StoreSeekAndRead)->Name("Store/SeekAndRead")->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorAnswer)->Name("Floor/Answer")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(StoreAnswer)->Name("Store/Answer")->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
