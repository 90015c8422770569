// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bewegungstakt.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

Bewegungstakt::Bewegungstakt(const Verzoegerung &verzoegerung, int dauer, int pause)
    : verzoegerung_(verzoegerung), dauer_(dauer)
{
    // So many times as long as asked for does a delay last.
    const double dehnung = std::max(1.0, double(verzoegerung.LoopsPerSecond) /
                                             std::max<qint32>(1, verzoegerung.LoopsLastSecond));
    pause_ = static_cast<qint16>(std::max(1L, std::lround(pause / dehnung)));
    if (pause_ * dehnung > dauer)
        pause_ = 0;
    schritte_ = std::clamp(static_cast<int>(dauer / std::max(1.0, pause_ * dehnung)), 1, dauer / pause);
    seit_.start();
}

void Bewegungstakt::Pause() const
{
    verzoegerung_.DelayMilliseconds(pause_);
}

} // namespace paukfix
