// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FileHandle.h"

#include "SafeFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>

namespace paukfix {

FileHandle OpenFile(const QString &path, int flags, mode_t mode)
{
    FileHandle file(open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NONBLOCK, mode));
    if (file.Get() < 0)
        ThrowFileError(errno, path);
    return file;
}

FileHandle OpenRegular(const QString &path, int flags)
{
    FileHandle file = OpenFile(path, O_RDONLY | flags);
    const mode_t mode = StatusOf(file, path).st_mode;
    if (!S_ISREG(mode))
        ThrowFileError(S_ISDIR(mode) ? EISDIR : ENXIO, path);
    return file;
}

struct stat StatusOf(const FileHandle &file, const QString &path)
{
    struct stat status = {};
    if (fstat(file.Get(), &status) != 0)
        ThrowFileError(errno, path);
    return status;
}

std::int64_t SizeOf(const FileHandle &file, const QString &path)
{
    return StatusOf(file, path).st_size;
}

void WriteAll(const FileHandle &file, Bytes bytes, const QString &path)
{
    while (!bytes.empty()) {
        const ssize_t count = write(file.Get(), bytes.data(), bytes.size());
        if (count >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            ThrowFileError(errno, path);
    }
}

void Sync(const FileHandle &file, const QString &path)
{
    if (fsync(file.Get()) != 0)
        ThrowFileError(errno, path);
}

} // namespace paukfix
