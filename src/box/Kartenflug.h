// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "Verzoegerung.h"

namespace paukfix {

class Eingabewache;
class Kasten;

// The card that is asked, on the box: it lies beside the compartments while it is asked, flies to its new
// one, and goes.
class Kartenflug
{
public:
    // Where the card lies, and the flight begins. Twips.
    static constexpr qint16 FlugLinks = 2280, FlugOben = 975;

    // All must outlive it.
    Kartenflug(Kasten &kasten, const Verzoegerung &verzoegerung, const AppConfig &konfig,
               Eingabewache &eingabe)
        : kasten_(kasten), verzoegerung_(verzoegerung), konfig_(konfig), eingabe_(eingabe)
    {
    }

    void Legen(const QString &frageNr);

    // Whether there will be a flight.
    bool Fliegt() const { return konfig_.Animation; }

    // Colours the card by its verdict and takes it from compartment `von` to `ziel`. A key or click, which is
    // kept, ends the flight. Nothing happens where animations are off.
    void KarteAnimieren(int von, int ziel, bool richtig);
    void Verbergen();

private:
    Kasten &kasten_;
    const Verzoegerung &verzoegerung_;
    const AppConfig &konfig_;
    Eingabewache &eingabe_;
};

} // namespace paukfix
