// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EngineLocks.h"

#include "CardSchema.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

thread_local int lastLocked = -1;

// Stands for the engine's "fcntl" (its document "The OS Backend (VFS) To SQLite", xSetSystemCall). Commands
// that do not lock pass their argument on, as the library's own function does.
int FcntlWithOwnLocks(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    switch (command) {
    case F_SETLK:
        command = F_OFD_SETLK;
        lastLocked = file;
        break;
    case F_SETLKW:
        command = F_OFD_SETLKW;
        lastLocked = file;
        break;
    case F_GETLK:
        command = F_OFD_GETLK;
        break;
    default:
        return ::fcntl(file, command, argument);
    }
    auto *lock = static_cast<struct flock *>(argument);
    lock->l_pid = 0; // the system refuses anything else; the engine leaves it as it was
    return ::fcntl(file, command, lock);
}

bool Install()
{
    sqlite3_initialize();
    sqlite3_vfs *system = sqlite3_vfs_find("unix");
    return system != nullptr &&
           system->xSetSystemCall(system, "fcntl",
                                  reinterpret_cast<sqlite3_syscall_ptr>(FcntlWithOwnLocks)) == SQLITE_OK;
}

} // namespace

void UseOpenFileLocks()
{
    static const bool installed = Install();
    if (!installed)
        throw StoreError(Fehler::Gesperrt, u"Karteien können hier nicht gesperrt werden."_s);
}

int LastLockedByEngine()
{
    return lastLocked;
}

void ThrowLocked(const QString &path)
{
    throw StoreError(Fehler::Gesperrt,
                     DateiSatz(path) + u"ist gesperrt: ein anderes Programm hat sie geöffnet."_s);
}

void LockCardFile(int file, int type, const QString &path)
{
    if (file < 0)
        ThrowFileError(errno, path);
    struct flock lock = {};
    lock.l_type = static_cast<short>(type);
    lock.l_whence = SEEK_SET;
    // The 512 bytes behind the first gigabyte on which all of the engine's locks lie ("File Locking And
    // Concurrency In SQLite Version 3").
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    if (::fcntl(file, F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES))
        ThrowLocked(path);
}

} // namespace paukfix
