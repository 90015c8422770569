// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Clock.h"
#include "Sitzungsfolge.h"
#include "VerlaufDatei.h"

#include <QMutex>
#include <QThreadPool>
#include <QTimer>

namespace paukfix {

// Keeps the history of the open box. It is told whenever the box may have changed, reads then what the
// session has counted, and half a second later writes it on a thread of its own: no answer waits for it, and
// a kill costs the history the answers of that half second. What cannot be written is kept and tried again
// with the next change; nobody is told while learning.
class Verlaufsbuch
{
public:
    // `kartei` and `clock` must outlive it; `pfad` is the file that it keeps.
    Verlaufsbuch(CardStore &kartei, const Clock &clock, const QString &pfad);
    Verlaufsbuch(const Verlaufsbuch &) = delete;
    Verlaufsbuch &operator=(const Verlaufsbuch &) = delete;
    // Writes what is left, as far as that is possible.
    ~Verlaufsbuch();

    // The box was opened, learned with, changed or closed.
    void Nachsehen();

    // What is known of the open box, up to this moment.
    struct Auskunft
    {
        Verlaufsstand stand;
        QString fehler; // why it cannot be kept at present; empty where it can
    };

    Auskunft Lesen();
    // The learner's answer to what Verlaufsstand::frueher asks.
    void Beantworten(bool dieselbe);
    // The learner was told of Verlaufsstand::beiseite.
    void BeiseiteGesagt();

private:
    void Schreiben();
    void Abarbeiten();
    void Warten();
    void AbdruckNehmen();

    CardStore &kartei_;
    const Clock &clock_;
    VerlaufDatei datei_;         // the thread's own, until Warten() has returned
    QString offen_;              // the path of the box as it was opened
    Verlaufsbox box_;            // of the session that is written down; without a beginning there is none
    std::optional<int> gesehen_; // how many cards the box had when its print was taken
    Sitzungsfolge sitzungen_;    // of the box that was opened last
    QTimer ruhe_;
    QMutex schloss_; // of the next two
    std::vector<Verlaufseintrag> wartend_;
    QString fehler_;
    QThreadPool schreiber_;
};

} // namespace paukfix
