// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"

namespace paukfix {

using namespace Qt::StringLiterals;

// Behind titles and the file's name while the box is open to be looked at; else empty.
inline QString NurAnsehenZusatz(const CardStore &kartei)
{
    return kartei.NurAnsehen() ? u" – nur zum Ansehen"_s : QString();
}

// The title of message boxes while this box is open, or none is.
inline QString Karteititel(const CardStore &kartei)
{
    return kartei.IsOpen() ? u"Merkkasten (%1)"_s.arg(kartei.CurrentFileName) + NurAnsehenZusatz(kartei)
                           : u"Merkkasten"_s;
}

} // namespace paukfix
