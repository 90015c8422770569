// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Verzoegerung.h"

#include <limits>

namespace paukfix {

void Verzoegerung::CalibrateDelayLoop()
{
    // Waits for the beginning of a second, then counts the readings until the next one.
    const qint64 before = clock_.Second();
    qint64 second = before;
    while (second == before)
        second = clock_.Second();
    constexpr qint32 Most = std::numeric_limits<qint32>::max();
    LoopsLastSecond = 0;
    while (clock_.Second() == second) {
        if (LoopsPerSecond < Most)
            ++LoopsPerSecond;
        if (LoopsLastSecond < Most)
            ++LoopsLastSecond;
    }
}

void Verzoegerung::DelayMilliseconds(qint16 ms) const
{
    const auto rounds = static_cast<qint64>(LoopsPerSecond / 1000.0 * ms);
    for (qint64 round = 0; round < rounds; ++round)
        static_cast<void>(clock_.Second());
}

} // namespace paukfix
