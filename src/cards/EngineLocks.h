// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// The locks on card files. A POSIX lock belongs to the process: all of them on a file drop as soon as the
// process closes any descriptor of that file (fcntl(2); "How To Corrupt An SQLite Database File", 2.2), and a
// file dialog, a picture reader or a library that looks at a directory does just that. A lock of the open
// file description (F_OFD_SETLK) stays until its own descriptor is closed or it is given back. Both kinds
// exclude each other, so that other programs of the engine see no difference.

// Makes the engine take its locks so, for the rest of the process. To be called before the first database is
// opened; again it does nothing. One connection a file: two of one process would exclude each other.
void UseOpenFileLocks();

// The descriptor on which this thread's engine has taken its last lock; -1 where it has taken none.
int LastLockedByEngine();

// Shuts every other program out of the card file, as far as the engine's own lock does it. `file` is open for
// reading and writing, or only for reading with `type` F_RDLCK. Taken again on the same descriptor, it is
// just kept. Throws StoreError 3045 where another program has the file, nothing where the file system has no
// locks; where opening gave no descriptor (-1), what ThrowFileError makes of its errno.
void LockCardFile(int file, int type, const QString &path);

// Throws StoreError 3045: the text for a card file that another program has.
[[noreturn]] void ThrowLocked(const QString &path);

} // namespace paukfix
