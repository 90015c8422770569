// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenabdruck.h"

#include "CardRecordset.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>
#include <QtEndian>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace paukfix {

namespace {

constexpr std::size_t Stichprobe = 256; // cards
constexpr int LaengsterText = 1000;     // characters of a text that count

// The finalizer of SplitMix64: neighbouring numbers come to lie anywhere.
quint64 Gestreut(double nummer)
{
    auto wert = std::bit_cast<quint64>(nummer + 0.0); // one zero only
    wert = (wert ^ (wert >> 30)) * 0xbf58476d1ce4e5b9U;
    wert = (wert ^ (wert >> 27)) * 0x94d049bb133111ebU;
    return wert ^ (wert >> 31);
}

quint64 Gehasht(const std::string &frage, const std::string &antwort)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const std::string &text : {frage, antwort}) {
        hash.addData(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
        hash.addData(QByteArrayView("\0", 1));
    }
    return qFromBigEndian<quint64>(hash.result().constData());
}

} // namespace

Kartenabdruck::Kartenabdruck(CardRecordset &karten)
{
    karten.Beside([this](SQLite::Database &database) {
        std::vector<std::pair<quint64, double>> nummern;
        SQLite::Statement alle(database, R"(SELECT "FrageNr" FROM "Lernkarten" INDEXED BY "FrageNr")");
        while (alle.executeStep()) {
            const double nummer = alle.getColumn(0).getDouble();
            nummern.emplace_back(Gestreut(nummer), nummer);
        }
        const auto ende = nummern.begin() + static_cast<std::ptrdiff_t>(std::min(nummern.size(), Stichprobe));
        std::partial_sort(nummern.begin(), ende, nummern.end());
        vollstaendig_ = ende == nummern.end();
        SQLite::Statement eine(database, R"(SELECT substr(CAST("Frage_Klartext" AS TEXT),1,?2),)"
                                         R"(substr(CAST("Antwort_1_Klartext" AS TEXT),1,?2) )"
                                         R"(FROM "Lernkarten" WHERE "FrageNr"=?1)");
        for (auto wahl = nummern.begin(); wahl != ende; ++wahl) {
            eine.reset();
            eine.bind(1, wahl->second);
            eine.bind(2, LaengsterText);
            if (!eine.executeStep())
                continue;
            const std::string frage = eine.getColumn(0).getString();
            const std::string antwort = eine.getColumn(1).getString();
            if (!frage.empty() || !antwort.empty())
                karten_.push_back({wahl->first, Gehasht(frage, antwort)});
        }
    });
}

QByteArray Kartenabdruck::Bytes() const
{
    QByteArray bytes;
    QDataStream strom(&bytes, QIODevice::WriteOnly);
    strom << vollstaendig_;
    for (const Karte &karte : karten_)
        strom << karte.nummer << karte.text;
    return bytes;
}

Kartenabdruck Kartenabdruck::AusBytes(const QByteArray &bytes)
{
    Kartenabdruck abdruck;
    QDataStream strom(bytes);
    strom >> abdruck.vollstaendig_;
    while (!strom.atEnd()) {
        Karte karte;
        strom >> karte.nummer >> karte.text;
        abdruck.karten_.push_back(karte);
    }
    const bool geordnet = std::is_sorted(abdruck.karten_.begin(), abdruck.karten_.end());
    return strom.status() == QDataStream::Ok && geordnet ? abdruck : Kartenabdruck();
}

Kartenabdruck::Vergleich Kartenabdruck::Mit(const Kartenabdruck &anderer) const
{
    // Beyond the last card of a print that had no room for all, nothing is known of its box.
    quint64 grenze = std::numeric_limits<quint64>::max();
    for (const Kartenabdruck *abdruck : {this, &anderer})
        if (!abdruck->vollstaendig_)
            grenze = std::min(grenze, abdruck->karten_.empty() ? 0 : abdruck->karten_.back().nummer);
    const auto anzahl = [grenze](const Kartenabdruck &abdruck) {
        return std::ranges::count_if(abdruck.karten_,
                                     [grenze](const Karte &karte) { return karte.nummer <= grenze; });
    };
    std::vector<Karte> gleiche;
    std::set_intersection(karten_.begin(), karten_.end(), anderer.karten_.begin(), anderer.karten_.end(),
                          std::back_inserter(gleiche));
    const auto weniger = std::min(anzahl(*this), anzahl(anderer));
    Vergleich vergleich{.gleiche = static_cast<int>(gleiche.size())};
    if (weniger > 0)
        vergleich.anteil = static_cast<double>(vergleich.gleiche) / static_cast<double>(weniger);
    return vergleich;
}

} // namespace paukfix
