// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardFacts.h"
#include "CardStore.h"

#include <optional>

namespace paukfix {

// How the editor walks through the cards of the open box.

enum class Richtung
{
    Vor,
    Zurueck
};

bool OhneKarten(const CardRecordset &karten);
// Past the last card, or before the first one.
bool AmEnde(const CardRecordset &karten, Richtung richtung);
// One step. Throws StoreError.
void Bewegen(CardRecordset &karten, Richtung richtung);
// Whether there is a current card. Throws StoreError where it cannot be read.
bool AufKarte(const CardFieldHandles &felder);
// Sets the order; where that fails, the next move says what is wrong.
void Ordnen(CardRecordset &karten, QStringView index) noexcept;

// As long as it lives the cards are in the order of their numbers; then in the order that they had. Throws
// StoreError.
class NachNummer
{
public:
    explicit NachNummer(CardRecordset &karten);
    NachNummer(const NachNummer &) = delete;
    NachNummer &operator=(const NachNummer &) = delete;
    ~NachNummer();

private:
    CardRecordset &karten_;
    QString vorher_;
};

// The place of the card that was come to: one on or back from a known one, else it is counted. One that
// cannot be counted is no reason not to show the card.
CardPosition Platz(CardRecordset &karten, const CardPosition &vorher, std::optional<Richtung> schritt);

} // namespace paukfix
