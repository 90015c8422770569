// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace SQLite {
class Database;
}

namespace paukfix {

// Writes the open card file `from` as another one at `to`, where nothing may stand, page by page, and checks
// the copy. What the engine has in memory it need not read: so a box can be saved whose file is gone. Throws
// StoreError whose text names `to` where that cannot be written, else the file that cannot be read. Not
// synced.
void CopyCardFile(SQLite::Database &from, const QString &to);

} // namespace paukfix
