// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Verlaufsbuch.h"

#include "StoreError.h"

#include <QFileInfo>
#include <QMutexLocker>

#include <algorithm>
#include <numeric>
#include <utility>

namespace paukfix {

namespace {

constexpr int Ruhe = 500; // ms from a change until it is written

Kartenzahlen Gezaehlt(const Faecher &faecher)
{
    Kartenzahlen karten{};
    std::ranges::transform(faecher, karten.begin(), [](const Fach &fach) { return fach.Anzahl; });
    return karten;
}

// What is not written yet, as if it were.
void Dazurechnen(std::vector<Tagesstand> &tage, const Tagesaenderungen &aenderungen)
{
    for (const auto &[tag, aenderung] : aenderungen) {
        auto stelle = std::ranges::lower_bound(tage, tag, {}, &Tagesstand::tag);
        if (stelle == tage.end() || stelle->tag != tag)
            stelle = tage.insert(stelle, {.tag = tag});
        stelle->richtig = std::max(0, stelle->richtig + aenderung.richtig);
        stelle->falsch = std::max(0, stelle->falsch + aenderung.falsch);
        stelle->karten = aenderung.karten.value_or(stelle->karten);
    }
}

} // namespace

Verlaufsbuch::Verlaufsbuch(CardStore &kartei, const Clock &clock, const QString &pfad)
    : kartei_(kartei), clock_(clock), datei_(pfad)
{
    schreiber_.setMaxThreadCount(1);
    ruhe_.setSingleShot(true);
    ruhe_.setInterval(Ruhe);
    QObject::connect(&ruhe_, &QTimer::timeout, &ruhe_, [this] { Schreiben(); });
}

Verlaufsbuch::~Verlaufsbuch()
{
    Nachsehen();
    Schreiben();
    Warten();
}

void Verlaufsbuch::Nachsehen()
{
    const QDateTime beginn = kartei_.IsOpen() ? kartei_.sitzung.Beginn() : QDateTime();
    const QString pfad = kartei_.OffenerPfad();
    if (box_.sitzung != beginn || offen_ != pfad) {
        Schreiben();
        gesehen_.reset();
        box_.abdruck = {};
        const bool gehtWeiter = std::exchange(box_.sitzung, beginn) == beginn; // under another name
        if (beginn.isValid() && offen_ != pfad) {
            if (!gehtWeiter)
                sitzungen_ = {};
            offen_ = pfad;
            box_.pfad = QFileInfo(pfad).canonicalFilePath();
        }
    }
    if (!beginn.isValid())
        return;
    sitzungen_.Sehen(beginn, clock_.Now().date(), kartei_.sitzung.RichtigZaehler(),
                     kartei_.sitzung.FalschZaehler(), Gezaehlt(kartei_.FachInfo));
    if (!ruhe_.isActive())
        ruhe_.start();
}

// A walk over the numbers of all cards: taken anew only where cards have come or gone.
void Verlaufsbuch::AbdruckNehmen()
{
    if (!kartei_.IsOpen() || kartei_.OffenerPfad() != offen_ || kartei_.sitzung.Beginn() != box_.sitzung)
        return;
    const Kartenzahlen karten = Gezaehlt(kartei_.FachInfo);
    const int alle = std::accumulate(karten.begin(), karten.end(), 0);
    if (gesehen_ == alle)
        return;
    try {
        box_.abdruck = Kartenabdruck(kartei_.Karten());
        gesehen_ = alle;
    } catch (const std::exception &) {
        // Cards that cannot be read are reported by whoever needs them.
    }
}

void Verlaufsbuch::Schreiben()
{
    ruhe_.stop();
    if (!box_.sitzung.isValid())
        return;
    Tagesaenderungen neu = sitzungen_.Abholen();
    AbdruckNehmen();
    {
        const QMutexLocker sperre(&schloss_);
        if (!neu.empty())
            wartend_.push_back({box_, std::move(neu)});
        if (wartend_.empty())
            return;
    }
    schreiber_.start([this] { Abarbeiten(); });
}

// On the thread.
void Verlaufsbuch::Abarbeiten()
{
    std::vector<Verlaufseintrag> alle;
    {
        const QMutexLocker sperre(&schloss_);
        alle.swap(wartend_);
    }
    QString fehler;
    std::vector<Verlaufseintrag> rest;
    for (const Verlaufseintrag &eintrag : alle) {
        try {
            datei_.Eintragen(eintrag);
        } catch (const std::exception &grund) {
            fehler = ErrorText(grund);
            if (!rest.empty() && rest.back().box.sitzung == eintrag.box.sitzung) {
                rest.back().box = eintrag.box;
                Zusammenfassen(rest.back().tage, eintrag.tage);
            } else {
                rest.push_back(eintrag);
            }
        }
    }
    const QMutexLocker sperre(&schloss_);
    fehler_ = fehler;
    wartend_.insert(wartend_.begin(), std::make_move_iterator(rest.begin()),
                    std::make_move_iterator(rest.end()));
}

void Verlaufsbuch::Warten()
{
    schreiber_.waitForDone();
}

Verlaufsbuch::Auskunft Verlaufsbuch::Lesen()
{
    Nachsehen();
    Schreiben();
    Warten();
    Auskunft auskunft{{}, fehler_};
    try {
        auskunft.stand = datei_.Lesen(box_);
    } catch (const std::exception &grund) {
        auskunft.fehler = ErrorText(grund);
    }
    for (const Verlaufseintrag &eintrag : wartend_)
        if (eintrag.box.sitzung == box_.sitzung)
            Dazurechnen(auskunft.stand.tage, eintrag.tage);
    return auskunft;
}

void Verlaufsbuch::Beantworten(bool dieselbe)
{
    Warten();
    try {
        datei_.Beantworten(box_, dieselbe);
    } catch (const std::exception &) {
        // The question stays, and is asked again when the history is looked at.
    }
}

void Verlaufsbuch::BeiseiteGesagt()
{
    Warten();
    try {
        datei_.BeiseiteGesagt();
    } catch (const std::exception &) {
        // Told once more, then.
    }
}

} // namespace paukfix
