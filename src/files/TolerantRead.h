// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"
#include "Progress.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace paukfix {

// What a failing disk still gives of a file.

// A part of a file that the disk keeps; between the parts are holes, which read as zeros. In bytes.
struct DataPart
{
    std::int64_t from = 0;
    std::int64_t to = 0;
};

// In ascending order. The whole file is one where the file system does not tell.
std::vector<DataPart> DataParts(int file, std::int64_t size);

// Reads up to `wanted` bytes at `offset`; blocks that the disk does not give become zeros. Returns the bytes
// that are in the file there.
std::size_t ReadTolerant(int file, std::int64_t offset, std::uint8_t *target, std::size_t wanted);

// Copies an open file to `to`, where nothing may stand, for its owner alone. Blocks that the disk does not
// give are zeros in the copy; holes stay holes. Not synced. Throws StoreError as ThrowFileError tells, and
// what `progress`, which is told of megabytes, throws.
void CopyTolerant(const FileHandle &from, const QString &to, const Progress &progress = {});

} // namespace paukfix
