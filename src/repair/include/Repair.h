// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <QString>

namespace paukfix {

// What a repair got out of a damaged card file.
struct RepairResult
{
    int cards = 0;       // cards in the repaired file
    QString damagedFile; // where the damaged file lies now
    QString report;      // the text file that tells what was saved and what not
    QString summary;     // what is missing or uncertain, in German sentences; empty where nothing is
};

// Reads every card that is still physically in the damaged file at `path`, writes a sound card file and lets
// it take the damaged one's place; that one stays beside it. Throws StoreError when there is nothing to save
// (3049), another program uses the file (3045) or the new file cannot be written, and what `progress`
// throws; the damaged file is then untouched. The file must not be open in this program.
RepairResult RepairDatabase(const QString &path, const Progress &progress = {});

// Clears what a repair of this file left when the program was killed in it. Only for the program that holds
// the file's lock: another one may be repairing it right now. Never throws.
void RemoveRepairLeftovers(const QString &path);

} // namespace paukfix
