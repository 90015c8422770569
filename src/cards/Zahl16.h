// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

namespace paukfix {

// Card numbers, running numbers and counts are whole numbers of 16 bits.

// Raises or lowers a 16-bit count; throws StoreError 6 where the result does not fit.
qint16 Plus16(qint16 wert, int um);
// Rounds half to even, as the box always has; throws StoreError 6 outside 16 bits.
qint16 Runden16(double wert);

} // namespace paukfix
