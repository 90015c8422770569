// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"
#include "StoreTestSupport.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>

namespace paukfix {

// What a box must hold: the texts of its cards by number, and which card stands behind which in a
// compartment. What was changed can be taken back, and done again until the next change.
class Boxmodell
{
public:
    struct Texte
    {
        QString frage, antwort;
        bool operator==(const Texte &) const = default;
    };

    struct Stand
    {
        std::map<int, Texte> karten;
        std::array<QList<int>, FachAnzahl> faecher;
        bool operator==(const Stand &) const = default;
    };

    explicit Boxmodell(const QString &pfad) : staende_{In(pfad)} {}

    static Stand In(const QString &pfad)
    {
        Stand stand;
        for (const CardRecord &karte : ReadCards(pfad)) { // in the order of the box
            const int nummer = static_cast<int>(karte.FrageNr);
            stand.karten[nummer] = {karte.Frage_Klartext, karte.Antwort_1_Klartext};
            stand.faecher.at(static_cast<std::size_t>(karte.FachNr)) << nummer;
        }
        return stand;
    }

    const Stand &Jetzt() const { return staende_[ort_]; }

    const QList<int> &Schlange(int fach) const { return Jetzt().faecher.at(static_cast<std::size_t>(fach)); }

    int HoechsteNummer() const { return Jetzt().karten.empty() ? 0 : Jetzt().karten.rbegin()->first; }

    void Antworten(int nummer, bool richtig)
    {
        Aendern([&](Stand &stand) {
            for (std::size_t fach = 0; fach < stand.faecher.size(); ++fach)
                if (stand.faecher[fach].removeOne(nummer)) {
                    stand.faecher.at(static_cast<std::size_t>(ZielFach(static_cast<int>(fach), richtig)))
                        << nummer;
                    return;
                }
        });
    }

    // New cards at the back of "Neu", with the next numbers.
    void Dazu(const QList<Texte> &neue)
    {
        Aendern([&](Stand &stand) {
            for (const Texte &texte : neue) {
                const int nummer = stand.karten.empty() ? 1 : stand.karten.rbegin()->first + 1;
                stand.karten[nummer] = texte;
                stand.faecher[0] << nummer;
            }
        });
    }

    void Umschreiben(int nummer, const Texte &texte)
    {
        Aendern([&](Stand &stand) { stand.karten[nummer] = texte; });
    }

    void Loeschen(int nummer)
    {
        Aendern([&](Stand &stand) {
            stand.karten.erase(nummer);
            for (QList<int> &fach : stand.faecher)
                fach.removeOne(nummer);
        });
    }

    void AlleNachNeu()
    {
        Aendern([](Stand &stand) {
            for (QList<int> &fach : stand.faecher)
                fach.clear();
            for (const auto &[nummer, texte] : stand.karten)
                stand.faecher[0] << nummer;
        });
    }

    void ErledigteNachNeu()
    {
        Aendern([](Stand &stand) {
            stand.faecher[0] << stand.faecher[FachErledigt];
            stand.faecher[FachErledigt].clear();
        });
    }

    bool KannZurueck() const { return ort_ > 0; }

    bool KannWieder() const { return ort_ + 1 < staende_.size(); }

    void Zurueck() { --ort_; }

    void Wieder() { ++ort_; }

    // The box was closed.
    void Vergessen()
    {
        staende_ = {Jetzt()};
        ort_ = 0;
    }

private:
    static constexpr std::size_t Weite = 100; // steps that are kept; the program keeps more

    template <typename Tun>
    void Aendern(const Tun &tun)
    {
        Stand stand = Jetzt();
        tun(stand);
        staende_.resize(ort_ + 1);
        staende_.push_back(std::move(stand));
        ++ort_;
        if (staende_.size() > Weite) {
            staende_.pop_front();
            --ort_;
        }
    }

    std::deque<Stand> staende_;
    std::size_t ort_ = 0;
};

} // namespace paukfix
