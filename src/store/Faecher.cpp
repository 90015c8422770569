// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Faecher.h"

#include "CardRecordset.h"

#include <algorithm>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 Hoechste16 = std::numeric_limits<qint16>::max();

// The compartment of a card. A compartment is one of seven: 2.5 is none, and seeking by it would find no
// card.
int FachOf(const Field &fachNr)
{
    const double fach = fachNr.Number();
    if (!(fach >= FachNeu && fach <= FachErledigt) || fach != static_cast<int>(fach))
        throw StoreError(Fehler::IndexAusserhalb,
                         u"Eine Karte liegt in Fach %1; es gibt nur die Fächer 0 bis 6."_s.arg(fach));
    return static_cast<int>(fach);
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
        karten.SetIndex(u"BoxKey");
        const Field frageNr = karten[u"FrageNr"], fachNr = karten[u"FachNr"], lfdNr = karten[u"FachLfdNr"];
        qint16 hoechste = 0;
        int seither = 0;
        for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
            hoechste = std::max(hoechste, frageNr.Integer());
            const int nummer = FachOf(fachNr);
            Fach &fach = Finden(nummer);
            if (fach.Anzahl == Hoechste16)
                throw TooManyCards(nummer);
            fach.LfdMax = lfdNr.Integer();
            ++fach.Anzahl;
            if (gezaehlt && ++seither > 10) {
                gezaehlt();
                seither = 0;
            }
        }
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
