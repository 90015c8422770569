// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Abfrage.h"
#include "Kartenabfrage.h"

#include <optional>
#include <variant>

namespace paukfix {

// What the learner answered, as far as the program can judge it: nothing, a text, or ticks.
using Antwort = std::variant<std::monostate, QString, Kreuze>;

// One card being asked, from the question to what the query leaves behind; knows no window.
class AbfrageLauf
{
public:
    enum class Stand
    {
        Gefragt,
        Geprueft, // the solution is shown; only a card that its learner judges stays here
        Beurteilt
    };

    AbfrageLauf() = default;

    explicit AbfrageLauf(Abfragekarte karte) : karte_(std::move(karte)) {}

    const Abfragekarte &Karte() const { return karte_; }

    Stand Wo() const { return stand_; }

    // What the query leaves behind if it ends now.
    std::optional<AbfrageErgebnis> Ergebnis() const { return ergebnis_; }

    // Ends the asking. The verdict on the answer, to be passed by Urteilen(); nothing where it is the
    // learner's to say.
    std::optional<bool> Pruefen(const Antwort &antwort);
    // The last verdict counts.
    void Urteilen(bool richtig);

    // The query ends otherwise than by a verdict: Bearbeiten or Geloescht.
    void Beenden(AbfrageErgebnis womit) { ergebnis_ = womit; }

    // The card's own picture and sound for where the query is; empty where it has none.
    const QString &Bild() const;
    const QString &Klang() const;

private:
    Abfragekarte karte_;
    Stand stand_ = Stand::Gefragt;
    std::optional<AbfrageErgebnis> ergebnis_;
};

} // namespace paukfix
