// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Faecher.h"

#include "CardRecordset.h"
#include "CardValue.h"
#include "Zahl16.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <limits>
#include <string>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 Hoechste16 = std::numeric_limits<qint16>::max();

qint16 Ganzzahl(const SQLite::Column &wert, int spalte)
{
    const double zahl = KeyValue(wert, spalte);
    CheckWritable(zahl, spalte);
    return Runden16(zahl);
}

// The compartment of a card. A compartment is one of seven: 2.5 is none, and seeking by it would find no
// card.
int FachOf(double fach)
{
    if (!(fach >= FachNeu && fach <= FachErledigt) || fach != static_cast<int>(fach))
        throw StoreError(Fehler::IndexAusserhalb,
                         u"Eine Karte liegt in Fach %1; es gibt nur die Fächer 0 bis 6."_s.arg(fach));
    return static_cast<int>(fach);
}

// 0 where there is no card. What is no number, or too large or small, stands at one of the index's ends.
qint16 HoechsteNummer(SQLite::Database &database)
{
    qint16 hoechste = 0;
    for (const char *richtung : {"ASC", "DESC"}) {
        SQLite::Statement ende(
            database, R"(SELECT "FrageNr" FROM "Lernkarten" INDEXED BY "FrageNr" ORDER BY "FrageNr" )" +
                          std::string(richtung) + " LIMIT 1");
        if (ende.executeStep())
            hoechste = std::max(hoechste, Ganzzahl(ende.getColumn(0), ColFrageNr));
    }
    return hoechste;
}

} // namespace

TooManyCards::TooManyCards(int fach)
    : StoreError(Fehler::Ueberlauf, u"In Fach %1 liegen mehr als %2 Karten."_s.arg(fach).arg(Hoechste16))
{
}

void Faecher::Leeren() noexcept
{
    tabelle_ = FachStartwerte();
}

qint16 Faecher::Zaehlen(CardRecordset &karten, const std::function<void()> &gezaehlt)
{
    Leeren();
    try {
        qint16 hoechste = 0;
        karten.Beside([&](SQLite::Database &database) {
            hoechste = HoechsteNummer(database);
            SQLite::Statement alle(database,
                                   R"(SELECT "FachNr","FachLfdNr" FROM "Lernkarten" INDEXED BY "BoxKey" )"
                                   R"(ORDER BY "FachNr","FachLfdNr")");
            int seither = 0;
            while (alle.executeStep()) {
                const int nummer = FachOf(KeyValue(alle.getColumn(0), ColFachNr));
                Fach &fach = Finden(nummer);
                if (fach.Anzahl == Hoechste16)
                    throw TooManyCards(nummer);
                fach.LfdMax = Ganzzahl(alle.getColumn(1), ColFachLfdNr);
                ++fach.Anzahl;
                if (gezaehlt && ++seither > 10) {
                    gezaehlt();
                    seither = 0;
                }
            }
        });
        karten.SetIndex(u"BoxKey");
        karten.MoveLast();
        if (!karten.AtEOF())
            karten.MoveNext();
        return hoechste;
    } catch (...) {
        Leeren();
        throw;
    }
}

qint16 Faecher::Anhaengen(int fach)
{
    Fach &wohin = Finden(fach);
    const qint16 anzahl = Plus16(wohin.Anzahl, 1);
    wohin.LfdMax = Plus16(wohin.LfdMax, 1);
    wohin.Anzahl = anzahl;
    return wohin.LfdMax;
}

void Faecher::Einreihen(int fach, qint16 lfdNr)
{
    Fach &wohin = Finden(fach);
    wohin.LfdMax = wohin.Anzahl == 0 ? lfdNr : std::max(wohin.LfdMax, lfdNr);
    wohin.Anzahl = Plus16(wohin.Anzahl, 1);
}

void Faecher::Entnehmen(int fach)
{
    Fach &woher = Finden(fach);
    woher.Anzahl = Plus16(woher.Anzahl, -1);
}

bool Faecher::Verbraucht(int fach) const
{
    return at(static_cast<std::size_t>(fach)).LfdMax == Hoechste16;
}

void Faecher::Aufgerueckt(int fach, int lfdMax)
{
    Finden(fach).LfdMax = Plus16(0, lfdMax);
}

} // namespace paukfix
