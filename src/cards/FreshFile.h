// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SafeFile.h"

#include <QString>

#include <functional>

namespace paukfix {

// A file that is made beside its place, under a name of its own, and takes the place in one step when it is
// whole. Until then, and when it is given up, what stands at the place is not touched. What a kill leaves is
// used again by the next attempt, or removed by ClearFreshFiles.
class FreshFile
{
public:
    // Keeps the directory locked as long as it lives.
    explicit FreshFile(const QString &place);
    FreshFile(const FreshFile &) = delete;
    FreshFile &operator=(const FreshFile &) = delete;
    ~FreshFile();

    // Runs `make` with the path to make it at, where nothing stands yet. Errors name the place instead.
    void Make(const std::function<void(const QString &path)> &make);

    // Journals of an old database at the place go first: the engine would roll them into the new file. What
    // they hold is in the old file then, so that it is whole where it stays after all; throws where that
    // fails, as EndUnfinishedChange tells.
    void TakePlace();

    const DirectoryLock &Lock() const { return lock_; }

private:
    void Clear() const;

    QString place_;
    QString path_;
    DirectoryLock lock_;
};

// Removes what killed programs left of fresh files in the directory, unless one is just being made there.
void ClearFreshFiles(const QString &directory) noexcept;

} // namespace paukfix
