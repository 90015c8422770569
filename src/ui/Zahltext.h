// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLocale>

namespace paukfix {

// A whole number as German texts write it: "32.767".
inline QString Zahltext(int zahl)
{
    return QLocale(QLocale::German).toString(zahl);
}

} // namespace paukfix
