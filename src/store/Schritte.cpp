// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Schritte.h"

#include "CardStore.h"
#include "CardTransaction.h"
#include "ChangeRecorder.h"

#include <sqlite3.h>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// What a step takes at least, its name and numbers included.
constexpr std::size_t Grundbedarf = 1024; // bytes

std::size_t Bedarf(const CardChanges &zeilen)
{
    return Grundbedarf + zeilen.Bytes();
}

} // namespace

Schritte::Schritte(CardStore &kartei) : kartei_(kartei) {}

Schritte::~Schritte() = default;

QString Schritte::Zurueckzunehmen() noexcept
{
    Beenden();
    return zurueck_.empty() ? QString() : zurueck_.back().was;
}

QString Schritte::Wiederholbar() noexcept
{
    Beenden();
    return wieder_.empty() ? QString() : wieder_.back().was;
}

bool Schritte::IstEndgueltig() noexcept
{
    Beenden();
    if (zurueck_.empty() || !datei_)
        return false;
    Schritt &schritt = zurueck_.back();
    if (!schritt.endgueltig) {
        // No card takes more than its file does.
        constexpr std::size_t Nebenbei = 1024; // bytes, beside the texts of a row
        const auto abdruck = datei_->ReadState();
        schritt.endgueltig = false;
        try {
            if (!abdruck || static_cast<std::size_t>(abdruck->size) + schritt.zeilen.Count() * Nebenbei >
                                CardChanges::MaxBytes)
                kartei_.Karten().Beside([&](SQLite::Database &database) {
                    schritt.endgueltig = BytesToRepeat(database, schritt.zeilen) > CardChanges::MaxBytes;
                });
        } catch (const std::exception &) { // what cannot be read cannot be taken back either
        }
    }
    return *schritt.endgueltig;
}

QString Schritte::ZuGross() noexcept
{
    Beenden();
    return zuGross_;
}

void Schritte::Zuruecknehmen()
{
    Wenden(zurueck_, Richtung::Zurueck);
}

void Schritte::Wiederholen()
{
    Wenden(wieder_, Richtung::Wieder);
}

void Schritte::Folgen(CardFile &datei)
{
    datei_ = &datei;
    if (!bewahrt_ || !abdruck_ || abdruck_ != datei.ReadState())
        Leeren();
    abdruck_ = datei.ReadState();
    schreiber_ = std::make_unique<ChangeRecorder>(datei.Database(), offen_, [this] {
        if (!laufend_) // a change that nobody has named
            laufend_ = Laufend{Richtung::Vor, u"Änderung"_s, Jetzt(), {}};
    });
}

void Schritte::Loslassen() noexcept
{
    schreiber_.reset();
    datei_ = nullptr;
    if (!bewahrt_)
        Leeren();
}

void Schritte::Leeren() noexcept
{
    zurueck_.clear();
    wieder_.clear();
    belegt_ = 0;
    offen_ = {};
    zuGross_.clear();
    laufend_.reset();
    abdruck_.reset();
}

void Schritte::Beginnen(const QString &was)
{
    if (!datei_)
        return;
    try {
        Klaeren();
    } catch (const StoreError &) { // whatever comes now, nothing leads back past what is not known
        Leeren();
    }
    laufend_ = Laufend{Richtung::Vor, was, Jetzt(), {}};
}

void Schritte::Beenden() noexcept
{
    try {
        Klaeren();
    } catch (const std::exception &) { // asked again before the next step
    }
}

// Looks in the file whether it has what was changed since the last step: a change may have been taken back,
// or be there although the disk has failed. Returns whether there is one more step.
bool Schritte::Klaeren()
{
    if (!datei_ || sqlite3_get_autocommit(datei_->Database().getHandle()) == 0)
        return false;
    if (offen_.IsEmpty()) {
        laufend_.reset();
        return false;
    }
    bool geschehen = false;
    kartei_.Karten().Beside(
        [&](SQLite::Database &database) { geschehen = !StandAsBefore(database, offen_); });
    abdruck_ = datei_->ReadState();
    Laufend laufend = std::exchange(laufend_, std::nullopt).value();
    if (geschehen)
        Ablegen(std::move(laufend));
    else if (offen_.Count() == 0) // of which nothing could be noted
        Leeren();
    offen_ = {};
    return geschehen;
}

// What was changed last is one more step, of those to be taken back or of those to be done again.
void Schritte::Ablegen(Laufend laufend)
{
    const auto entnehmen = [&](std::deque<Schritt> &von) {
        belegt_ -= Bedarf(von.back().zeilen);
        von.pop_back();
    };
    const auto vergessen = [&](std::deque<Schritt> &welche) {
        while (!welche.empty())
            entnehmen(welche);
    };
    if (laufend.richtung == Richtung::Vor)
        vergessen(wieder_);
    else
        entnehmen(laufend.richtung == Richtung::Zurueck ? zurueck_ : wieder_);
    if (laufend.danach) {
        kartei_.FachInfo = laufend.danach->faecher;
        kartei_.sitzung = laufend.danach->sitzung;
        kartei_.HighestCardNumber = laufend.danach->hoechsteNummer;
    }
    std::deque<Schritt> &wohin = laufend.richtung == Richtung::Zurueck ? wieder_ : zurueck_;
    zuGross_.clear();
    if (!offen_.Whole()) { // there is no way past it
        vergessen(wohin);
        if (laufend.richtung == Richtung::Vor)
            zuGross_ = laufend.was;
        return;
    }
    belegt_ += Bedarf(offen_);
    wohin.push_back({std::move(laufend.was), laufend.vorher, std::move(offen_)});
    while (belegt_ > CardChanges::MaxBytes) {
        std::deque<Schritt> &aelteste = zurueck_.size() > (&wohin == &zurueck_ ? 1 : 0) ? zurueck_ : wieder_;
        belegt_ -= Bedarf(aelteste.front().zeilen);
        aelteste.pop_front();
    }
}

void Schritte::Wenden(std::deque<Schritt> &von, Richtung richtung)
{
    Klaeren();
    if (von.empty())
        return;
    laufend_ = Laufend{richtung, von.back().was, Jetzt(), von.back().stand};
    std::optional<StoreError> fehler;
    try {
        CardRecordset &karten = kartei_.Karten();
        CardTransaction zug(karten);
        karten.Past([&](SQLite::Database &database) { TakeBack(database, von.back().zeilen); });
        zug.Commit();
    } catch (const StoreError &error) {
        fehler = error;
    }
    bool geschehen = false;
    try {
        geschehen = Klaeren();
    } catch (const StoreError &) { // asked again before the next step
        if (!fehler)
            throw;
    }
    if (fehler)
        throw geschehen ? StoreError(fehler->Number(), fehler->Text() + u" Es ist trotzdem geschehen."_s)
                        : *fehler;
}

Boxstand Schritte::Jetzt() const
{
    return {kartei_.FachInfo, kartei_.sitzung, kartei_.HighestCardNumber};
}

Aenderung::Aenderung(CardStore &kartei, const QString &was) : schritte_(kartei.schritte)
{
    schritte_.Beginnen(was);
}

Aenderung::~Aenderung()
{
    schritte_.Beenden();
}

SchritteBewahren::SchritteBewahren(CardStore &kartei) : schritte_(kartei.schritte)
{
    schritte_.bewahrt_ = true;
}

SchritteBewahren::~SchritteBewahren()
{
    schritte_.bewahrt_ = false;
    if (schritte_.datei_)
        schritte_.Beenden();
    else
        schritte_.Leeren();
}

} // namespace paukfix
