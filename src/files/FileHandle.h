// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <unistd.h>
#include <utility>

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
