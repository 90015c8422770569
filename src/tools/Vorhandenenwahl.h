// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenabgleich.h"

#include <QWidget>

#include <optional>
#include <utility>

class QComboBox;
class QLabel;

namespace paukfix {

// Counts which of some new cards a box has already, as they would come in one after the other.
class Vorabzaehler
{
public:
    // Without a box nothing is known.
    explicit Vorabzaehler(std::optional<Kartenabgleich> box) : box_(std::move(box)) {}

    template <typename Inhalt>
    void Karte(const Inhalt &inhalt)
    {
        constexpr int Hoechstens = 32767; // more a box cannot hold
        if (++karten_ > Hoechstens || !box_)
            return;
        const Kartenkennung kennung(inhalt());
        const auto [befund, zeile] = box_->Suchen(kennung);
        bekannt_ += befund == Kartenabgleich::Befund::Bekannt ? 1 : 0;
        andereAntwort_ += befund == Kartenabgleich::Befund::AndereAntwort ? 1 : 0;
        if (befund != Kartenabgleich::Befund::Bekannt)
            box_->Aufnehmen(kennung, befund == Kartenabgleich::Befund::Neu ? -karten_ : zeile);
    }

    int Karten() const { return karten_; }

    // Question and answer are there.
    int Bekannt() const { return bekannt_; }

    // The question is there with another answer.
    int AndereAntwort() const { return andereAntwort_; }

private:
    std::optional<Kartenabgleich> box_;
    int karten_ = 0;
    int bekannt_ = 0;
    int andereAntwort_ = 0;
};

// Asks what is to become of cards that the box has already; not there while it has none of them.
class Vorhandenenwahl final : public QWidget
{
public:
    explicit Vorhandenenwahl(QWidget *eltern);

    void Anbieten(int bekannt, int andereAntwort);
    Vorhandene Wahl() const;

private:
    QLabel *lblVorhandene_;
    QComboBox *cmbVorhandene_;
};

} // namespace paukfix
