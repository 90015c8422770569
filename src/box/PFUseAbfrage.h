// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Eingabewache.h"
#include "Kartenabfrage.h"
#include "PFUse.h"
#include "Tastaturwechsel.h"

#include <memory>
#include <optional>

// The query in a window over the box: makes the window for each card, and hands the keyboard to it and back.
class PFUseAbfrage final : public Kartenabfrage
{
public:
    // What it works with; all must outlive it.
    struct Teile
    {
        QWidget &box;
        CardStore &kartei;
        BoxZustand &zustand;
        Dienste dienste;
        Eingabewache &eingabe;
    };

    explicit PFUseAbfrage(const Teile &teile);
    ~PFUseAbfrage() override;

    Ausgang Fragen(bool bearbeitbar) override;

    bool IstBeurteilt() const override { return fenster_ && fenster_->IstBeurteilt(); }

    void Schliessen() override;
    void Abschliessen() override;

private:
    Teile teile_;
    std::optional<Tastaturhalt> halt_;
    std::unique_ptr<PFUse> fenster_; // until the next one, or Abschliessen()
};
