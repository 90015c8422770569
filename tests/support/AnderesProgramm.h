// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// What other programs meet at a card file that is open here.

// What the engine's own program says to `sql`, run to its end.
QString OtherProgram(const QString &path, const QString &sql);

// Why the file is not locked against every other program, asked from second processes: one looks for a lock
// where the engine's lie, the engine's own program reads and writes. Empty where it is locked.
QString GapInLock(const QString &path);

// Drops the lock on the card file that is open here: a network drive that comes back may have forgotten it.
void LoseLocks(const QString &path);

} // namespace paukfix
