// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Sicherung.h"

namespace paukfix {

// Which backups of a box may go: all but the last 10, the last one of each of the last 14 days, and the last
// one of each of the last 26 weeks. Where all backups of all boxes together, `alle` bytes, are more than a
// tenth of the disk that is free, `frei` bytes, the oldest go as well until they are not; the newest always
// stays. Where `frei` is negative nobody knows it, and none goes for its sake. The oldest stands first in the
// result.
Sicherungsliste Entbehrlich(const Sicherungsliste &liste, const QDate &heute, qint64 alle, qint64 frei);

} // namespace paukfix
