// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

#include <optional>

namespace paukfix {

// What a query leaves behind; nothing where it was closed before there was a verdict.
enum class AbfrageErgebnis : qint16
{
    Richtig = -1,
    Falsch = 0,
    Bearbeiten = 10, // the card is to be edited
    Geloescht = 11   // the card is no more
};

// Whether a card was answered.
inline bool IstUrteil(std::optional<AbfrageErgebnis> ergebnis)
{
    return ergebnis == AbfrageErgebnis::Richtig || ergebnis == AbfrageErgebnis::Falsch;
}

// The query as the box knows it: asks the current card of the card table.
class Kartenabfrage
{
public:
    Kartenabfrage() = default;
    Kartenabfrage(const Kartenabfrage &) = delete;
    Kartenabfrage &operator=(const Kartenabfrage &) = delete;
    virtual ~Kartenabfrage() = default;

    // While the box is at rest: makes everything ready for the first card of compartment `fach`, so that its
    // question is there at once. Tells of nothing that goes wrong, as that card may never be asked.
    virtual void Vorbereiten(int fach) = 0;
    // Shows the query modally and returns when it has gone. A card that cannot be read is reported and not
    // asked. `bearbeitbar`: there is an editor that the card can be sent to.
    virtual std::optional<AbfrageErgebnis> Fragen(bool bearbeitbar) = 0;
    // After Fragen, before anything else is shown: returns when the box has the keyboard.
    virtual void Zurueckkehren() = 0;
    // The verdict that is shown, or was shown last.
    virtual std::optional<AbfrageErgebnis> Urteil() const = 0;
    // Takes the query away with the event loop, as its learner would.
    virtual void Schliessen() = 0;
    // After the verdict was stored: keeps what the learner has made of the window, which may take a message.
    virtual void Abschliessen() = 0;
};

} // namespace paukfix
