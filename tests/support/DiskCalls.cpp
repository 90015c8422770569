// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DiskCalls.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace paukfix {

using Change = DiskCalls::Change;
using What = DiskCalls::Change::What;

static DiskCalls *current = nullptr;

namespace {

std::recursive_mutex oneByOne;
thread_local bool own = false; // what the test itself does in between

ino_t FileAt(const char *path)
{
    struct stat info = {};
    return ::lstat(path, &info) == 0 ? info.st_ino : 0;
}

// Runs the system's call, which returns -1 with its error in errno, as a change that the test may see and
// spoil.
template <typename Call, typename Half>
auto Seen(const Change &change, const Call &call, const Half &half) -> decltype(call())
{
    if (current == nullptr || current->below.isEmpty() || own || !change.path.startsWith(current->below))
        return call();
    const std::lock_guard guard(oneByOne);
    own = true;
    const int error = current->before(change);
    if (error != 0 && current->half)
        half();
    decltype(call()) result = -1;
    if (error == 0)
        result = call();
    const int afterwards = error != 0 ? error : errno;
    if (result >= 0)
        current->done(change);
    own = false;
    errno = afterwards;
    return result;
}

template <typename Call>
auto Seen(const Change &change, const Call &call)
{
    return Seen(change, call, [] {});
}

// The change of an open file; of anything but regular files and directories it has no path.
Change OfOpen(What what, int file)
{
    Change change{.what = what};
    struct stat info = {};
    if (current == nullptr || current->below.isEmpty() || own || ::fstat(file, &info) != 0 ||
        (!S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode)))
        return change;
    change.path = QFile::symLinkTarget("/proc/self/fd/" + QString::number(file));
    change.file = info.st_ino;
    return change;
}

Change OfNamed(What what, const char *path, const char *to = nullptr)
{
    Change change{.what = what};
    if (current == nullptr || current->below.isEmpty() || own)
        return change;
    change.path = QFile::decodeName(path);
    change.to = to == nullptr ? QString() : QFile::decodeName(to);
    change.file = FileAt(path);
    return change;
}

int Opened(const char *path, int flags, mode_t mode)
{
    const auto call = [&] { return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode)); };
    const bool there = FileAt(path) != 0;
    if ((flags & O_CREAT) != 0 && (flags & __O_TMPFILE) != __O_TMPFILE && !there)
        return Seen(OfNamed(What::Make, path), call);
    if ((flags & O_TRUNC) != 0 && there)
        return Seen(OfNamed(What::Truncate, path), call);
    return call();
}

ssize_t Written(int file, const void *bytes, size_t count, off_t place, bool atPlace)
{
    const auto call = [&](size_t some) {
        return atPlace ? ::syscall(SYS_pwrite64, file, bytes, some, place)
                       : ::syscall(SYS_write, file, bytes, some);
    };
    Change change = OfOpen(What::Write, file);
    if (!change.path.isEmpty()) {
        change.place = atPlace ? place : ::lseek(file, 0, SEEK_CUR);
        change.bytes = QByteArray(static_cast<const char *>(bytes), static_cast<qsizetype>(count));
    }
    return Seen(
        change, [&] { return static_cast<ssize_t>(call(count)); }, [&] { call(count / 2); });
}

int Truncated(int file, off_t length)
{
    Change change = OfOpen(What::Truncate, file);
    change.place = length;
    return Seen(change, [&] { return static_cast<int>(::syscall(SYS_ftruncate, file, length)); });
}

int Synced(int file, long number)
{
    return Seen(OfOpen(What::Sync, file), [&] {
        return current != nullptr && !current->waits ? 0 : static_cast<int>(::syscall(number, file));
    });
}

int Renamed(const char *from, const char *to, unsigned int flags)
{
    if (current != nullptr && !own) {
        current->calls << "rename " + QFile::decodeName(from) + " to " + QFile::decodeName(to);
        if (const int error = current->renameFails(QFile::decodeName(to)); error != 0) {
            errno = error;
            return -1;
        }
    }
    return Seen(OfNamed(What::Rename, from, to), [&] {
        return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, flags));
    });
}

} // namespace

DiskCalls::DiskCalls()
{
    current = this;
}

DiskCalls::~DiskCalls()
{
    current = nullptr;
}

// The system's headers may hold bodies of their own for these names.
extern "C" {

int DiskSync(int file) __asm__("fsync");
int DiskDataSync(int file) __asm__("fdatasync");
int DiskRename(const char *from, const char *to) __asm__("rename");
int DiskLink(const char *from, const char *to) __asm__("link");
int DiskAccess(int directory, const char *path, int mode, int flags) __asm__("faccessat");
int DiskOpen(const char *path, int flags, mode_t mode) __asm__("open");
int DiskOpen64(const char *path, int flags, mode_t mode) __asm__("open64");
ssize_t DiskWrite(int file, const void *bytes, size_t count) __asm__("write");
ssize_t DiskWriteAt(int file, const void *bytes, size_t count, off_t place) __asm__("pwrite");
ssize_t DiskWriteAt64(int file, const void *bytes, size_t count, off_t place) __asm__("pwrite64");
int DiskTruncate(int file, off_t length) __asm__("ftruncate");
int DiskTruncate64(int file, off_t length) __asm__("ftruncate64");
int DiskRemove(const char *path) __asm__("unlink");
int DiskMakeDirectory(const char *path, mode_t mode) __asm__("mkdir");

int DiskSync(int file)
{
    if (current != nullptr && !own)
        current->calls << "sync " + QFile::symLinkTarget("/proc/self/fd/" + QString::number(file));
    return Synced(file, SYS_fsync);
}

int DiskDataSync(int file)
{
    return Synced(file, SYS_fdatasync);
}

int DiskRename(const char *from, const char *to)
{
    return Renamed(from, to, 0);
}

int DiskLink(const char *from, const char *to)
{
    if (current != nullptr && !own)
        current->calls << "link " + QFile::decodeName(from) + " to " + QFile::decodeName(to);
    return Seen(OfNamed(What::Link, from, to),
                [&] { return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0)); });
}

int DiskAccess(int directory, const char *path, int mode, int flags)
{
    if (current != nullptr && (mode & W_OK) != 0 && !current->readOnlyDirectory.isEmpty() &&
        QFile::decodeName(path) == current->readOnlyDirectory) {
        errno = EROFS;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_faccessat2, directory, path, mode, flags));
}

int DiskOpen(const char *path, int flags, mode_t mode)
{
    return Opened(path, flags, mode);
}

int DiskOpen64(const char *path, int flags, mode_t mode)
{
    return Opened(path, flags, mode);
}

ssize_t DiskWrite(int file, const void *bytes, size_t count)
{
    return Written(file, bytes, count, 0, false);
}

ssize_t DiskWriteAt(int file, const void *bytes, size_t count, off_t place)
{
    return Written(file, bytes, count, place, true);
}

ssize_t DiskWriteAt64(int file, const void *bytes, size_t count, off_t place)
{
    return Written(file, bytes, count, place, true);
}

int DiskTruncate(int file, off_t length)
{
    return Truncated(file, length);
}

int DiskTruncate64(int file, off_t length)
{
    return Truncated(file, length);
}

int DiskRemove(const char *path)
{
    return Seen(OfNamed(What::Remove, path),
                [&] { return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0)); });
}

int DiskMakeDirectory(const char *path, mode_t mode)
{
    return Seen(OfNamed(What::MakeDirectory, path),
                [&] { return static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, path, mode)); });
}

} // extern "C"

} // namespace paukfix
