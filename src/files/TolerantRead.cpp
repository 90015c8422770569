// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TolerantRead.h"

#include "SafeFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace paukfix {

std::size_t ReadTolerant(int file, std::int64_t offset, std::uint8_t *target, std::size_t wanted)
{
    constexpr std::size_t Sector = 512;
    std::size_t done = 0;
    std::size_t step = wanted;
    while (done < wanted) {
        const auto part = std::min(step, wanted - done);
        const ssize_t got = pread(file, target + done, part, offset + static_cast<std::int64_t>(done));
        if (got > 0) {
            done += static_cast<std::size_t>(got);
        } else if (got == 0) {
            break;
        } else if (errno == EINTR) {
            continue;
        } else if (part > Sector) {
            step = Sector; // a block that cannot be read costs only itself
        } else {
            std::fill_n(target + done, part, std::uint8_t{0});
            done += part;
        }
    }
    std::fill(target + done, target + wanted, std::uint8_t{0});
    return done;
}

std::vector<DataPart> DataParts(int file, std::int64_t size)
{
    std::vector<DataPart> parts;
    for (std::int64_t at = 0; at < size;) {
        const std::int64_t from = lseek(file, at, SEEK_DATA);
        if (from < 0 && errno == ENXIO) // only a hole is left
            break;
        const std::int64_t to = from < 0 ? -1 : lseek(file, from, SEEK_HOLE);
        if (to <= from)
            return {{0, size}};
        if (from < size)
            parts.push_back({from, std::min(to, size)});
        at = to;
    }
    return parts;
}

void CopyTolerant(const FileHandle &from, const QString &to, const Progress &progress)
{
    const FileHandle target = OpenFile(to, O_WRONLY | O_CREAT | O_EXCL, 0600);
    const std::int64_t size = SizeOf(from, to);
    std::vector<std::uint8_t> block(std::size_t{1} << 20);
    const std::vector<DataPart> parts = DataParts(from.Get(), size);
    const std::int64_t end = parts.empty() ? 0 : parts.back().to;
    for (const DataPart &part : parts)
        for (std::int64_t at = part.from; at < part.to;) {
            if (progress)
                progress(static_cast<int>(at >> 20), static_cast<int>((end >> 20) + 1));
            const auto wanted = static_cast<std::size_t>(
                std::min<std::int64_t>(static_cast<std::int64_t>(block.size()), part.to - at));
            const std::size_t got = ReadTolerant(from.Get(), at, block.data(), wanted);
            if (got == 0)
                break;
            if (lseek(target.Get(), at, SEEK_SET) != at)
                ThrowFileError(errno, to);
            WriteAll(target, Bytes(block).first(got), to);
            at += static_cast<std::int64_t>(got);
        }
    if (ftruncate(target.Get(), size) != 0)
        ThrowFileError(errno, to);
}

} // namespace paukfix
