// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <array>

namespace paukfix {

// What the engine keeps beside a database file: the rollback journal, the log and the index of the log.
inline constexpr std::array<const char *, 3> CompanionSuffixes{"-journal", "-wal", "-shm"};

// The companion of the card file. The engine follows a link before it names one.
QString CompanionOf(const QString &cardFile, const char *suffix);

// A rollback journal that was written by a transaction over several files ends in the name of another
// journal, which the engine opens, wherever it is, and deletes when it finds it done with. The program never
// writes one: beside a card file of somebody else it can only be meant badly.

// Does the file end so? False for a file that is not there.
bool NamesOtherFiles(const QString &journal);

// Does the rollback journal or the log hold a change? False where there is none.
bool HoldsChange(const QString &journal);

// Did a program leave off in the midst of a change to the card file, so that its file alone shows neither
// what was before nor what should be? Only the engine, opening it to write, takes the change back. A log is
// one too, but the engine reads a sound file together with its log.
bool HasUnfinishedChange(const QString &cardFile);

// Takes the mark away by which the engine finds the name; what the journal keeps of pages stays. Throws
// StoreError.
void ForgetOtherFiles(const QString &journal);

} // namespace paukfix
