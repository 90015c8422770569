// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DiskCalls.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace paukfix {

static DiskCalls *current = nullptr;

DiskCalls::DiskCalls()
{
    current = this;
}

DiskCalls::~DiskCalls()
{
    current = nullptr;
}

extern "C" int fsync(int file)
{
    if (current != nullptr)
        current->calls << "sync " + QFile::symLinkTarget("/proc/self/fd/" + QString::number(file));
    return current != nullptr && !current->waits ? 0 : static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int fdatasync(int file)
{
    return current != nullptr && !current->waits ? 0 : static_cast<int>(::syscall(SYS_fdatasync, file));
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    if (current != nullptr) {
        current->calls << "rename " + QFile::decodeName(from) + " to " + QFile::decodeName(to);
        if (const int error = current->renameFails(QFile::decodeName(to)); error != 0) {
            errno = error;
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int link(const char *from, const char *to) noexcept
{
    if (current != nullptr)
        current->calls << "link " + QFile::decodeName(from) + " to " + QFile::decodeName(to);
    return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int faccessat(int directory, const char *path, int mode, int flags) noexcept
{
    if (current != nullptr && (mode & W_OK) != 0 && !current->readOnlyDirectory.isEmpty() &&
        QFile::decodeName(path) == current->readOnlyDirectory) {
        errno = EROFS;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_faccessat2, directory, path, mode, flags));
}

} // namespace paukfix
