// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Dialoge.h"
#include "Meldungen.h"

#include <functional>

namespace paukfix {

// Keeps what could not be stored, because disk or file have failed, until its learner has decided: it is
// tried again, the whole box is saved with it as another card file, in which the work goes on, or it is
// discarded.
class Aufbewahrung
{
public:
    enum class Ausgang
    {
        Gespeichert,
        Verworfen,
        Vertagt // the question was closed: nothing is stored, nothing discarded
    };

    // What is to be stored.
    struct Sache
    {
        QString kontext; // before the error's text: "Die Antwort konnte nicht gespeichert werden: "
        QString trost;   // "Die Antwort ist noch nicht verloren."
        std::function<void()> speichern; // throws StoreError; may be called again and again, on another file
        std::function<void()> gescheitert = [] {}; // before each question
        bool vertagbar = false;                    // else closing the question tries again
    };

    // All must outlive it.
    Aufbewahrung(CardStore &kartei, Meldungen &meldungen, Dialoge &dialoge);
    Aufbewahrung(const Aufbewahrung &) = delete;
    Aufbewahrung &operator=(const Aufbewahrung &) = delete;

    // Throws what the first attempt has thrown where neither disk nor file are to blame: trying again would
    // not help.
    Ausgang Speichern(const Sache &sache);
    // For what has failed already, with `fehler`.
    Ausgang Entscheiden(const Sache &sache, const StoreError &fehler);

    // The work goes on in another card file.
    std::function<void(const QString &pfad)> umgezogen = [](const QString &) {};

    // Whether disk or file are to blame.
    static bool IstStoerung(const StoreError &fehler);

private:
    QString ZielWaehlen();
    void Umziehen(const QString &ziel);

    CardStore &kartei_;
    Meldungen &meldungen_;
    Dialoge &dialoge_;
};

} // namespace paukfix
