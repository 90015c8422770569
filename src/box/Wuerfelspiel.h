// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Lernlauf.h"
#include "Verzoegerung.h"

#include <optional>

namespace paukfix {

class WuerfelBild;

// The die: rolls until a compartment is accepted, picks one of its cards, and has it asked.
class Wuerfelspiel
{
public:
    // What it works with; all must outlive it.
    struct Teile
    {
        CardStore &kartei;
        const Verzoegerung &verzoegerung;
        Dienste dienste;
        Belegung &belegung;
        Eingabewache &eingabe;
        WuerfelBild &bild;
        Lernlauf &lernlauf;
    };

    explicit Wuerfelspiel(const Teile &teile) : teile_(teile) {}

    void PicWürfel_Click();

private:
    std::optional<int> Wuerfeln();
    void WurfZeigen();

    Teile teile_;
};

} // namespace paukfix
