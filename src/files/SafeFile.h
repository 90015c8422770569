// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <sys/types.h>

namespace paukfix {

// Files that outlast a killed program, a full disk and a power cut. What must last is written beside its
// place and synced, takes the place in one rename, and the directory is synced: at every moment the old or
// the new file is there, whole. All functions throw StoreError as ThrowFileError tells.

// The number and the German text for a failed system call: `error` is its errno, `path` what it was about.
// 53 file not there, 76 directory not there or name too long, 3051 not permitted or no regular file, 61 disk
// full, 7 no memory, 67 too many open files, 57 any other error of the device.
[[noreturn]] void ThrowFileError(int error, const QString &path);

// The content of a regular file of at most `limit` bytes; throws 3051 for anything that is no regular file (a
// pipe would never end) and 7 above the limit.
QByteArray ReadFile(const QString &path, qint64 limit);

// Creates (with `mode`) or overwrites the file with `content` and syncs it. A kill may leave part of it.
void WriteFileSynced(const QString &path, const QByteArray &content, mode_t mode = 0666);

void SyncFile(const QString &path);
// A file system that cannot sync directories is taken as it is.
void SyncDirectory(const QString &path);

// Syncs `temporary` and lets it take the place of `target`, whose permissions it keeps. Both must lie on one
// file system. When it throws, `target` is whole: the old file, or already the new one if the directory's
// sync failed.
void ReplaceFile(const QString &temporary, const QString &target);

// Gives `target` the new `content`, whole or not at all. Works beside it, in a file "<target>.tmp" that it
// overwrites and leaves behind only when killed; a link is followed and stays. Two processes must not do so
// at the same time: see DirectoryLock.
void RewriteFile(const QString &target, const QByteArray &content);

// Runs `step`; its errors name `place` instead of `temporary`: users know the place, not the name under which
// a file is made beside it.
void WithPlaceNamed(const QString &temporary, const QString &place, const std::function<void()> &step);

// Renames, and syncs the directory of the new name.
void RenameSynced(const QString &from, const QString &to);

// Renames where nothing stands under the new name, else throws 3051. Not synced.
void RenameFresh(const QString &from, const QString &to);

// Copies a file; nothing may stand at `to`. Not synced.
void CopyFile(const QString &from, const QString &to);

// Gives the file at `file` the further name `name` beside it, under which nothing may stand, durably. Where
// the file system knows no second names, a copy gets it.
void KeepUnderName(const QString &file, const QString &name);

enum class Links
{
    Followed,
    Themselves // a link is a file of its own
};

// True when both paths lead to the same existing file (device and inode), however they are spelled.
bool SameFile(const QString &one, const QString &other, Links links = Links::Followed);

// Does anything stand under this name, be it a link that leads nowhere?
bool IsNameTaken(const QString &path);

// What a user may still write where the directory lies, asked of its file system: the list of mounts, which
// the toolkit would ask, does not have it in a chroot. -1 where nobody knows.
qint64 FreeBytes(const QString &directory);

// `path` with `suffix` at its end; a name that would be longer than file systems allow is shortened before
// it.
QString BesideName(const QString &path, const QString &suffix);

// The place itself, in full, or what a link that stands there leads to: a link stays a link, and what belongs
// to a file lies beside the file.
QString Resolved(const QString &place);

// Keeps other instances of the program from writing in a directory meanwhile. Waits two seconds at most, then
// throws 3045. The lock ends with the process at the latest; a file system without locks is taken as it is.
class DirectoryLock
{
public:
    explicit DirectoryLock(const QString &directory);
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;
    ~DirectoryLock();

    const QString &Directory() const { return directory_; }

private:
    QString directory_;
    int descriptor_;
};

} // namespace paukfix
