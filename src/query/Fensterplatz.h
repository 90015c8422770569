// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"

class QDialog;
class QEvent;

namespace paukfix {

class Kartenflaeche;

// Where the query's window stands and how large it is: as its learner has left it, else as the card needs it.
class Fensterplatz
{
public:
    // `fenster` outlives this.
    explicit Fensterplatz(QDialog &fenster) : fenster_(fenster) {}

    // Gives the window, which is not shown, its place for the card that it holds. What its learner does to it
    // from here on changes `lage`.
    void Waehlen(const Fensterlage &lage, Kartenflaeche &karte);
    // Of the window's moves, resizes and activations.
    void Merken(const QEvent &event);
    // Before the window goes.
    void Abschliessen();

    const Fensterlage &Lage() const { return lage_; }

private:
    QDialog &fenster_;
    Fensterlage vorher_, lage_;
    bool benutzt_ = false; // the window has had the keyboard since its place was chosen
};

} // namespace paukfix
