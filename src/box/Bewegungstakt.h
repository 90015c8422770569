// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Verzoegerung.h"

#include <QElapsedTimer>

namespace paukfix {

// The pace of one movement: how many steps it takes, and the pause after each. The pauses of
// `DelayMilliseconds` last longer with every file that the program has opened; the pace is chosen so that
// together they take about `dauer` milliseconds all the same.
class Bewegungstakt
{
public:
    // `pause` is the pause that looks best, in milliseconds of the clock.
    Bewegungstakt(const Verzoegerung &verzoegerung, int dauer, int pause);

    int Schritte() const { return schritte_; }

    // After a step. A machine that is too busy to keep the pace gets no more of them.
    void Pause() const;

    bool IstUm() const { return seit_.elapsed() >= dauer_; }

private:
    const Verzoegerung &verzoegerung_;
    int dauer_;
    int schritte_;
    qint16 pause_; // as DelayMilliseconds takes it
    QElapsedTimer seit_;
};

} // namespace paukfix
