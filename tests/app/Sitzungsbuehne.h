// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Laufbuehne.h"
#include "Sitzungsverwalter.h"

namespace paukfix {

// The built program within a desktop's session.
class Sitzungsbuehne : public Laufbuehne
{
protected:
    // Before each test.
    void Aufbauen(Vorspann vorspann)
    {
        Laufbuehne::Aufbauen(vorspann);
        sitzung_ = std::make_unique<Sitzungsverwalter>();
        anzeige_->umgebung.insert("SESSION_MANAGER", sitzung_->Adresse());
    }

    // Behind each test.
    void Abbauen()
    {
        lauf_.reset();
        sitzung_.reset();
    }

    std::unique_ptr<Sitzungsverwalter> sitzung_;
    std::unique_ptr<Lauf> lauf_;
};

} // namespace paukfix
