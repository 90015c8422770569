// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Clock.h"

#include <ctime>

namespace paukfix {

qint64 SystemClock::Second() const
{
    return std::time(nullptr);
}

QDateTime SystemClock::Now() const
{
    return QDateTime::currentDateTime();
}

} // namespace paukfix
