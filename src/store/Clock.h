// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDateTime>

namespace paukfix {

// The clock, passed in so that tests do not wait.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    // The time of day in whole seconds. Any two readings in the same second are equal; nothing else is
    // promised (it falls back at midnight). Cheap: the delay loop reads it millions of times.
    virtual qint64 Second() const = 0;
    virtual QDateTime Now() const = 0;
};

class SystemClock final : public Clock
{
public:
    qint64 Second() const override;
    QDateTime Now() const override;
};

} // namespace paukfix
