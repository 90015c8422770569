// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace paukfix {

using Bytes = std::span<const std::uint8_t>;

// An open file descriptor.
class FileHandle
{
public:
    FileHandle() = default;

    explicit FileHandle(int file) : file_(file) {}

    FileHandle(FileHandle &&other) noexcept : file_(std::exchange(other.file_, -1)) {}

    FileHandle &operator=(FileHandle &&other) noexcept
    {
        std::swap(file_, other.file_);
        return *this;
    }

    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;

    ~FileHandle()
    {
        if (file_ >= 0)
            close(file_);
    }

    int Get() const { return file_; }

private:
    int file_ = -1;
};

// What is known of a file and done with it by its descriptor. All throw StoreError as ThrowFileError tells,
// with `path` in the text.

// Opened without waiting, as a pipe would for its other end. `mode` is that of a file that is made.
FileHandle OpenFile(const QString &path, int flags, mode_t mode = 0666);
// Opens a file to be read; throws 3051 for anything that is no regular file: a pipe or a device may never
// end.
FileHandle OpenRegular(const QString &path, int flags = 0);
struct stat StatusOf(const FileHandle &file, const QString &path);
std::int64_t SizeOf(const FileHandle &file, const QString &path);
void WriteAll(const FileHandle &file, Bytes bytes, const QString &path);
void Sync(const FileHandle &file, const QString &path);

} // namespace paukfix
