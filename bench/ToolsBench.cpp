// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The file tools on a full box beside plain SQLite doing the same writes in the same run. Read the ratios,
// not the times: a case named "Tools/X" stands against "Floor/X". What a tool does beyond the writes (it
// opens the card file again) counts; the calibration of the delay loop does not.
#include "Anhaengen.h"
#include "AsciiTausch.h"
#include "BigBox.h"
#include "CardFile.h"
#include "NachNeu.h"
#include "NeueKartei.h"
#include "SafeFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <benchmark/benchmark.h>

using namespace paukfix;

namespace {

// Each round works on files of its own.
class Workshop
{
public:
    Workshop() { store_.KarteiPfad = directory_.path(); }

    QString Path(const char *name) const { return directory_.filePath(QString::fromLatin1(name)); }

    // A copy of the full box, or an empty one.
    QString Full(const char *name = "voll.pzb") const
    {
        QFile::remove(Path(name));
        CopyFile(BigFile(), Path(name));
        SyncFile(Path(name));
        return Path(name);
    }

    QString Empty() const
    {
        QFile::remove(Path("leer.pzb"));
        CardFile::Create(Path("leer.pzb"));
        return Path("leer.pzb");
    }

    Werkbank Open(const QString &path)
    {
        QString name = path.section(u'/', -1);
        oeffner_.OpenCardFile(name);
        return {store_, oeffner_, meldungen_};
    }

    void Close() { store_.CloseCardFile(); }

    QString Text()
    {
        QString path = Path("text.txt");
        if (!QFile::exists(path)) {
            AsciiExportieren(Open(Full()), path, u'\t');
            Close();
        }
        return path;
    }

private:
    QTemporaryDir directory_;
    StillMeldungen meldungen_;
    HastyClock clock_;
    CardStore store_;
    KarteiOeffner oeffner_{store_, meldungen_, clock_};
};

// Times `work` alone; `prepare` and `after` are not counted.
template <class Prepare, class Work, class After>
void Measure(benchmark::State &state, Prepare prepare, Work work, After after)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto prepared = prepare();
        state.ResumeTiming();
        const bool done = work(prepared);
        state.PauseTiming();
        after();
        if (!done)
            state.SkipWithError("the tool failed");
        state.ResumeTiming();
    }
}

// Opens the card file and reads the keys of all cards.
void ReadKeys(const QString &path)
{
    SQLite::Database database = OpenFloor(path);
    SQLite::Statement walk(database, "SELECT FrageNr, FachNr, FachLfdNr FROM Lernkarten INDEXED BY BoxKey "
                                     "ORDER BY FachNr, FachLfdNr");
    double sum = 0;
    while (walk.executeStep())
        sum += walk.getColumn(0).getDouble() + walk.getColumn(1).getDouble() + walk.getColumn(2).getDouble();
    benchmark::DoNotOptimize(sum);
}

void ToolsExport(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Open(shop.Full()); },
        [&](const Werkbank &bank) {
            return AsciiExportieren(bank, shop.Path("aus.txt"), u'\t') == Ausgang::Gelungen;
        },
        [&] { shop.Close(); });
}

void FloorExport(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return OpenFloor(shop.Full()); },
        [&](SQLite::Database &database) {
            SQLite::Statement walk(
                database, "SELECT Frage_Klartext, Antwort_1_Klartext, Picture_9_Name FROM Lernkarten "
                          "INDEXED BY BoxKey WHERE Antworttyp=1 ORDER BY FachNr, FachLfdNr");
            QByteArray text;
            while (walk.executeStep()) {
                for (int i = 0; i < 3; ++i) {
                    const SQLite::Column column = walk.getColumn(i);
                    text += QString::fromUtf8(column.getText(), column.getBytes()).toLatin1();
                    text += i < 2 ? "\t" : "\r\n";
                }
            }
            WriteFileSynced(shop.Path("aus.txt"), text);
            return true;
        },
        [] {});
}

void ToolsImport(benchmark::State &state)
{
    Workshop shop;
    const QString text = shop.Text();
    Measure(
        state, [&] { return shop.Open(shop.Empty()); },
        [&](const Werkbank &bank) { return AsciiImportieren(bank, text, u'\t') == Ausgang::Gelungen; },
        [&] { shop.Close(); });
}

void FloorImport(benchmark::State &state)
{
    Workshop shop;
    const QString text = shop.Text();
    Measure(
        state, [&] { return OpenFloor(shop.Empty()); },
        [&](SQLite::Database &database) {
            SQLite::Transaction transaction(database);
            SQLite::Statement insert(database,
                                     "INSERT INTO Lernkarten(FrageNr, FachNr, FachLfdNr, Antworttyp, Frage, "
                                     "Frage_Klartext, Antwort_1, Antwort_1_Klartext, Picture_9_Name) "
                                     "VALUES(?1, 0, ?1, 1, ?2, ?2, ?3, ?3, ?4)");
            int number = 0;
            for (const QByteArray &line : ReadFile(text, 1 << 30).split('\n')) {
                const QList<QByteArray> parts = QString::fromLatin1(line).toUtf8().split('\t');
                if (parts.size() != 3)
                    continue;
                insert.bind(1, ++number);
                for (int i = 0; i < 3; ++i)
                    insert.bind(i + 2, parts[i].toStdString());
                insert.exec();
                insert.reset();
            }
            transaction.commit();
            return true;
        },
        [] {});
}

void ToolsAppend(benchmark::State &state)
{
    Workshop shop;
    const QString source = shop.Full("quelle.pzb");
    Measure(
        state, [&] { return shop.Open(shop.Empty()); },
        [&](const Werkbank &bank) { return KarteiAnhaengen(bank, source) == Ausgang::Gelungen; },
        [&] { shop.Close(); });
}

void FloorAppend(benchmark::State &state)
{
    Workshop shop;
    const QString source = shop.Full("quelle.pzb");
    Measure(
        state, [&] { return shop.Empty(); },
        [&](const QString &path) {
            {
                SQLite::Database database = OpenFloor(path);
                database.exec("ATTACH '" + source.toStdString() + "' AS source");
                SQLite::Transaction transaction(database);
                std::string columns = "Antworttyp";
                for (const char *column : {"Picture_1_Name",     "Picture_2_Name",
                                           "Picture_3_Name",     "Picture_4_Name",
                                           "Picture_5_Name",     "Picture_6_Name",
                                           "Picture_7_Name",     "Picture_8_Name",
                                           "Picture_9_Name",     "PictureTop",
                                           "Pictureleft",        "Pictureheight",
                                           "Picturewidth",       "Frage",
                                           "Frage_Klartext",     "Antwort_1",
                                           "Antwort_2",          "Antwort_3",
                                           "Antwort_4",          "Antwort_5",
                                           "Antwort_ch_1",       "Antwort_ch_2",
                                           "Antwort_ch_3",       "Antwort_ch_4",
                                           "Antwort_ch_5",       "Antwort_1_Klartext",
                                           "Antwort_2_Klartext", "Antwort_3_Klartext",
                                           "Antwort_4_Klartext", "Antwort_5_Klartext"})
                    columns += std::string(",") + column;
                database.exec("INSERT INTO main.Lernkarten(FrageNr, FachNr, FachLfdNr," + columns +
                              ") SELECT row_number() OVER (), 0, row_number() OVER ()," + columns +
                              " FROM (SELECT * FROM source.Lernkarten ORDER BY FachNr, FachLfdNr)");
                transaction.commit();
            }
            ReadKeys(path);
            return true;
        },
        [] {});
}

bool KeepsTopic(const QString &topic)
{
    return topic.size() % 2 == 0;
}

QStringList KeptTopics()
{
    QStringList topics;
    for (int i = 0; i < 40; ++i)
        if (KeepsTopic(Words(i, 2)))
            topics << Words(i, 2);
    return topics;
}

// The floor of what makes a new card file of the open one: copy, change, read.
void ChangeCopy(benchmark::State &state, const char *sql)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Full(); },
        [&](const QString &path) {
            {
                QFile::remove(shop.Path("neu.pzb"));
                CopyFile(path, shop.Path("neu.pzb"));
                SQLite::Database database = OpenFloor(shop.Path("neu.pzb"));
                database.exec(sql);
            }
            ReadKeys(shop.Path("neu.pzb"));
            return true;
        },
        [] {});
}

void ToolsFilter(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Open(shop.Full()); },
        [&](const Werkbank &bank) {
            return ThemenAusfiltern(bank, shop.Path("neu.pzb"), KeptTopics()) == Ausgang::Gelungen;
        },
        [&] { shop.Close(); });
}

void FloorFilter(benchmark::State &state)
{
    ChangeCopy(state, "DELETE FROM Lernkarten WHERE length(Picture_9_Name) % 2 = 1");
}

void ToolsMirror(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Open(shop.Full()); },
        [&](const Werkbank &bank) { return KarteiSpiegeln(bank, shop.Path("neu.pzb")) == Ausgang::Gelungen; },
        [&] { shop.Close(); });
}

void FloorMirror(benchmark::State &state)
{
    ChangeCopy(state, "UPDATE Lernkarten SET Frage=Antwort_1, Frage_Klartext=Antwort_1_Klartext, "
                      "Antwort_1=Frage, Antwort_1_Klartext=Frage_Klartext WHERE Antworttyp=1");
}

void ToolsAllToNew(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Open(shop.Full()); },
        [&](const Werkbank &bank) { return AlleNachNeu(bank) == Ausgang::Gelungen; }, [&] { shop.Close(); });
}

void FloorAllToNew(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Full(); },
        [&](const QString &path) {
            {
                SQLite::Database database = OpenFloor(path);
                database.exec("BEGIN; UPDATE Lernkarten SET FachLfdNr=FachLfdNr+131072 WHERE FachNr=0;"
                              "UPDATE Lernkarten SET FachNr=0, FachLfdNr=place FROM (SELECT rowid AS card, "
                              "row_number() OVER (ORDER BY FrageNr) AS place FROM Lernkarten) "
                              "WHERE Lernkarten.rowid=card; COMMIT");
            }
            ReadKeys(path);
            return true;
        },
        [] {});
}

void ToolsDoneToNew(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Open(shop.Full()); },
        [&](const Werkbank &bank) { return ErledigteNachNeu(bank).has_value(); }, [&] { shop.Close(); });
}

void FloorDoneToNew(benchmark::State &state)
{
    Workshop shop;
    Measure(
        state, [&] { return shop.Full(); },
        [&](const QString &path) {
            {
                SQLite::Database database = OpenFloor(path);
                database.exec("UPDATE Lernkarten SET FachNr=0, FachLfdNr=FachLfdNr+10000 WHERE FachNr=6");
            }
            ReadKeys(path);
            return true;
        },
        [] {});
}

#define PAUKFIX_PAIR(name)                                                                                   \
    BENCHMARK(Floor##name)->Name("Floor/" #name)->Unit(benchmark::kMillisecond)->UseRealTime();              \
    BENCHMARK(Tools##name)->Name("Tools/" #name)->Unit(benchmark::kMillisecond)->UseRealTime()

PAUKFIX_PAIR(Export);
PAUKFIX_PAIR(Import);
PAUKFIX_PAIR(Append);
PAUKFIX_PAIR(Filter);
PAUKFIX_PAIR(Mirror);
PAUKFIX_PAIR(AllToNew);
PAUKFIX_PAIR(DoneToNew);

} // namespace

BENCHMARK_MAIN();
