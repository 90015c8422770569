// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Blaettertaste.h"

#include <QKeyEvent>

namespace paukfix {

Blaettern Blaettertaste(const QKeyEvent &taste)
{
    constexpr quint32 LinksVonY = 94; // scan code of the key that keyboards with 102 keys have there
    const Qt::KeyboardModifiers umschalter = taste.modifiers();
    if (!umschalter.testFlag(Qt::ControlModifier) || umschalter & (Qt::AltModifier | Qt::MetaModifier))
        return Blaettern::Nicht;
    const bool kleiner = taste.key() == Qt::Key_Less;
    const bool groesser = taste.key() == Qt::Key_Greater;
    // A key press that does not say where it was comes from software that knows the German keyboard.
    const bool ortUnbekannt = taste.nativeScanCode() == 0;
    if (taste.nativeScanCode() == LinksVonY || (ortUnbekannt && kleiner))
        return umschalter.testFlag(Qt::ShiftModifier) ? Blaettern::Vor : Blaettern::Zurueck;
    if (groesser)
        return Blaettern::Vor;
    return kleiner ? Blaettern::Zurueck : Blaettern::Nicht;
}

} // namespace paukfix
