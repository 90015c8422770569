// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <QString>

namespace paukfix {

// Writes the cards of a sound file of ours from before the sums of pages (CardFile::LacksPageSums) into one
// whose pages have them; it takes the old one's place in one step, checked and synced. The file must not be
// open here, and no other program can open it meanwhile. Throws StoreError where that fails (3045 in use, 61
// disk full,
// ...), and what `progress` throws; the old file is then untouched. A kill leaves the old file or the new
// one.
void GivePageSums(const QString &path, const Progress &progress = {});

} // namespace paukfix
