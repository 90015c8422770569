// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Clock.h"

namespace paukfix {

// The delay loop: waits by reading the clock as often as it could be read in the seconds that were counted.
class Verzoegerung
{
public:
    explicit Verzoegerung(const Clock &clock) : clock_(clock) {}

    // Counts the clock readings of one second onto LoopsPerSecond (which stops at 2,147,483,647). Blocks for
    // one to two seconds.
    void CalibrateDelayLoop();
    // Waits about `ms` milliseconds by reading the clock LoopsPerSecond / 1000 * ms times.
    void DelayMilliseconds(qint16 ms) const;

    qint32 LoopsPerSecond = 0;
    qint32 LoopsLastSecond = 0; // what the last calibration alone counted: the machine's rate

private:
    const Clock &clock_;
};

} // namespace paukfix
