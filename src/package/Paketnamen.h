// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "PlainName.h"

#include <QString>

namespace paukfix {

// May a card file in a package be called so?
inline bool IstKarteiname(const QString &name)
{
    return IsPlainName(name) && name.endsWith(u".pzb", Qt::CaseInsensitive);
}

} // namespace paukfix
