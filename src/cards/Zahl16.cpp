// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zahl16.h"

#include "StoreError.h"

#include <cmath>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

static qint16 To16(double wert)
{
    if (!(wert >= std::numeric_limits<qint16>::min() && wert <= std::numeric_limits<qint16>::max()))
        throw StoreError(Fehler::Ueberlauf, u"Überlauf: Nummern und Anzahlen gehen nur bis 32767."_s);
    return static_cast<qint16>(wert);
}

qint16 Plus16(qint16 wert, int um)
{
    return To16(static_cast<double>(wert) + um);
}

qint16 Runden16(double wert)
{
    // The default rounding mode of nearbyint is half to even.
    return To16(std::nearbyint(wert));
}

} // namespace paukfix
