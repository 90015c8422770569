// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxZustand.h"
#include "CardStore.h"
#include "Meldungen.h"
#include "Zufall.h"

#include <QDialog>
#include <QString>

#include <functional>
#include <memory>

// What a query works on and tells.
struct AbfrageUmgebung
{
    CardStore &store;
    BoxZustand &zustand;
    Meldungen &meldungen;
    Zufall &zufall;
    const QString &programmPfad;
    std::function<void(const QString &pfad)> klang = [](const QString &) {}; // plays a sound file
    std::function<void()> stille = [] {};                                    // stops it
    std::function<void()> automatikAus = [] {}; // switches the automatic mode off
};

// The query window: asks the current card of the card table and leaves the verdict in AbfrageErgebnis.
class PFUse final : public QDialog
{
public:
    // How a query ended. Abgebrochen: closed before there was a verdict; AbfrageErgebnis is as it was, and
    // the caller neither moves nor counts anything.
    enum class Ausgang
    {
        Abgebrochen,
        Beurteilt,
        Bearbeiten,
        Geloescht
    };

    explicit PFUse(AbfrageUmgebung umgebung, QWidget *parent = nullptr);
    ~PFUse() override;

    // Shows the window modally for the current card and returns when it is closed.
    Ausgang Fragen();
};
