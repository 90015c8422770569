// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// A package of 20,000 notes, every fourth of them formatted: read card by card beside its unzipping and a
// walk over its rows, and read into a new box. Read the ratio, not the times; "MB" is what the memory grows
// by at most.
#include "BigBox.h"
#include "CardStore.h"
#include "Deckausgabe.h"
#include "FremdEinlesen.h"
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "ZipReader.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <benchmark/benchmark.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr int Notizen = 20'000;

const QTemporaryDir &Verzeichnis()
{
    static const QTemporaryDir verzeichnis;
    return verzeichnis;
}

const QString &Paket()
{
    static const QString pfad = [] {
        QString neu = Verzeichnis().filePath(u"paket.apkg"_s);
        Deckbericht bericht;
        ApkgSchreiben(neu,
                      {.titel = u"Groß"_s,
                       .medien = Verzeichnis().path(),
                       .anzahl = Notizen,
                       .naechste =
                           [i = 0](CardRecord &karte) mutable {
                               if (i >= Notizen)
                                   return false;
                               karte = {};
                               karte.Antworttyp = 1;
                               karte.FachNr = i % 7;
                               karte.Frage_Klartext = Words(i, 12);
                               karte.Antwort_1_Klartext =
                                   Words(i + Notizen, 8) + u"\r\n"_s + Words(i + 2 * Notizen, 8);
                               karte.Frage = i % 4 == 0 ? Rtf(karte.Frage_Klartext) : karte.Frage_Klartext;
                               karte.Antwort_1 = karte.Antwort_1_Klartext;
                               karte.Picture_9_Name = u"Thema %1"_s.arg(i % 50);
                               ++i;
                               return true;
                           }},
                      bericht);
        return neu;
    }();
    return pfad;
}

double Speicher(const char *zeile) // MB
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray alles = status.readAll();
    return alles.mid(alles.indexOf(zeile) + static_cast<qsizetype>(qstrlen(zeile)))
               .simplified()
               .split(' ')
               .value(0)
               .toDouble() /
           1024;
}

// What the memory grows by at most while it lives.
class Wachstum
{
public:
    explicit Wachstum(benchmark::State &state) : state_(state), vorher_(Speicher("VmRSS:"))
    {
        QFile spitze(u"/proc/self/clear_refs"_s); // begins the peak anew
        if (spitze.open(QIODevice::WriteOnly))
            spitze.write("5");
    }

    Wachstum(const Wachstum &) = delete;
    Wachstum &operator=(const Wachstum &) = delete;

    ~Wachstum() { state_.counters["MB"] = Speicher("VmHWM:") - vorher_; }

private:
    benchmark::State &state_;
    double vorher_;
};

void FloorUnzipAndWalk(benchmark::State &state)
{
    const QString &paket = Paket();
    for (auto _ : state) {
        const ZipReader zip(paket);
        QTemporaryFile sammlung;
        if (!sammlung.open())
            return;
        zip.Unpack(*zip.Find(u"collection.anki2"_s), [&](Bytes stueck) {
            sammlung.write(reinterpret_cast<const char *>(stueck.data()), static_cast<qint64>(stueck.size()));
        });
        sammlung.flush();
        const SQLite::Database datenbank(sammlung.fileName().toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement zeilen(datenbank,
                                 "SELECT n.*, c.* FROM cards c JOIN notes n ON n.id = c.nid ORDER BY c.id");
        std::size_t bytes = 0;
        while (zeilen.executeStep())
            for (int spalte = 0; spalte < zeilen.getColumnCount(); ++spalte)
                bytes += std::string_view(zeilen.getColumn(spalte).getText()).size();
        benchmark::DoNotOptimize(bytes);
    }
}

void ReadDeck(benchmark::State &state)
{
    const QString &paket = Paket();
    const Wachstum wachstum(state);
    for (auto _ : state) {
        const auto quelle = DeckOeffnen(paket);
        Deckbericht bericht;
        int karten = 0;
        for (Deckkarte karte; quelle->Naechste(karte, bericht);)
            ++karten;
        if (karten != Notizen)
            state.SkipWithError("cards are missing");
    }
}

void ReadDeckIntoABox(benchmark::State &state)
{
    const QString &paket = Paket();
    StillMeldungen meldungen;
    const HastyClock clock;
    const Wachstum wachstum(state);
    for (auto _ : state) {
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = Verzeichnis().path();
        const auto quelle = DeckOeffnen(paket);
        Einlesewahl wahl;
        wahl.neueKartei = Verzeichnis().filePath(u"neu.pzb"_s);
        Eingelesenes ergebnis;
        FremdEinlesen({store, oeffner, meldungen}, *quelle, u"paket.apkg"_s, wahl, ergebnis);
        if (ergebnis.karten != Notizen)
            state.SkipWithError("cards are missing");
        store.CloseCardFile();
    }
}

BENCHMARK(FloorUnzipAndWalk)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDeck)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDeckIntoABox)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv); // texts are laid out
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
