// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Uhr.h"

#include <ctime>

qint64 SystemUhr::Sekunde() const
{
    return std::time(nullptr);
}

QDateTime SystemUhr::Jetzt() const
{
    return QDateTime::currentDateTime();
}
