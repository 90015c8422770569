// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDateTime>

// The clock, passed in so that tests do not wait.
class Uhr
{
public:
    Uhr() = default;
    Uhr(const Uhr &) = delete;
    Uhr &operator=(const Uhr &) = delete;
    virtual ~Uhr() = default;

    // The time of day in whole seconds. Any two readings in the same second are equal; nothing else is
    // promised (it falls back at midnight). Cheap: the delay loop reads it millions of times.
    virtual qint64 Sekunde() const = 0;
    virtual QDateTime Jetzt() const = 0;
};

class SystemUhr final : public Uhr
{
public:
    qint64 Sekunde() const override;
    QDateTime Jetzt() const override;
};
