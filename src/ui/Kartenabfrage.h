// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

// The query, as the box knows it: asks the current card of the card table once and leaves the verdict in
// AbfrageErgebnis.
class Kartenabfrage
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

    Kartenabfrage() = default;
    Kartenabfrage(const Kartenabfrage &) = delete;
    Kartenabfrage &operator=(const Kartenabfrage &) = delete;
    virtual ~Kartenabfrage() = default;

    // Shows the query modally and returns when it has gone and the box has the keyboard. `bearbeitbar`: there
    // is an editor that the card can be sent to. Throws StoreError where the card cannot be read.
    virtual Ausgang Fragen(bool bearbeitbar) = 0;
    // A verdict is shown, or was when the last query went.
    virtual bool IstBeurteilt() const = 0;
    // Takes the query away with the event loop, as its learner would.
    virtual void Schliessen() = 0;
    // After the verdict was stored: keeps what the learner has made of the window, which may take a message.
    virtual void Abschliessen() = 0;
};
