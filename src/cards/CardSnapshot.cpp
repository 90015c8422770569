// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSnapshot.h"

#include "CardFile.h"
#include "CardSchema.h"
#include "JournalFile.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Patience = 5000; // ms
const QString Prefix = u"paukfix-ansehen-"_s;

// Without a descriptor where the directory is in use, not there or somebody else's.
FileHandle LockedDirectory(const QString &path)
{
    FileHandle directory(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat opened = {};
    struct stat there = {};
    const bool taken = ::fstat(directory.Get(), &opened) == 0 && opened.st_uid == ::geteuid() &&
                       ::flock(directory.Get(), LOCK_EX | LOCK_NB) == 0 &&
                       ::lstat(QFile::encodeName(path).constData(), &there) == 0 &&
                       there.st_ino == opened.st_ino;
    return taken ? std::move(directory) : FileHandle();
}

bool IsSame(const QString &one, const QString &other)
{
    QFile a(one), b(other);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size())
        return false;
    constexpr qint64 Block = 1 << 20;
    for (;;) {
        const QByteArray part = a.read(Block);
        if (part != b.read(Block))
            return false;
        if (part.isEmpty())
            return a.atEnd() && a.error() == QFile::NoError;
    }
}

// The journals that lie beside the file. The index of a log is made anew from it.
QStringList Journals(const QString &path)
{
    QStringList found;
    for (const char *suffix : {"-journal", "-wal"})
        if (const QString name = CompanionOf(path, suffix); QFileInfo::exists(name))
            found << name;
    return found;
}

} // namespace

void ClearSnapshots() noexcept
{
    const QDir all(QDir::tempPath());
    for (const QString &name : all.entryList({Prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks))
        if (const FileHandle lock = LockedDirectory(all.filePath(name)); lock.Get() >= 0)
            QDir(all.filePath(name)).removeRecursively();
}

void CardSnapshot::MakeDirectory()
{
    do { // another program may take it for one that was left, before it is locked
        directory_ = std::make_unique<QTemporaryDir>(QDir::tempPath() + u'/' + Prefix + u"XXXXXX"_s);
        if (!directory_->isValid())
            ThrowFileError(ENOSPC, QDir::tempPath());
        lock_ = LockedDirectory(directory_->path());
    } while (lock_.Get() < 0 && !QFileInfo::exists(directory_->path()));
}

CardSnapshot::CardSnapshot(const QString &path)
{
    ClearSnapshots();
    MakeDirectory();
    path_ = directory_->filePath(QFileInfo(path).fileName());
    const QString file = Resolved(path);
    const auto copied = [&](const QString &from) { return path_ + from.mid(file.size()); };
    for (const QDeadlineTimer end(Patience); !end.hasExpired();) {
        CheckAccess(path, CardFile::Access::ReadOnly); // no pipe under the name of a journal
        const QStringList all = QStringList(file) + Journals(path);
        bool whole = true;
        for (const QString &old : QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(directory_->filePath(old));
        try {
            for (const QString &one : all)
                CopyFile(one, copied(one));
        } catch (const StoreError &error) {
            if (error.Number() != Fehler::DateiNichtGefunden || !QFileInfo::exists(file))
                throw;
            whole = false; // a journal has gone meanwhile
        }
        for (qsizetype i = 0; whole && i < all.size(); ++i)
            whole = IsSame(all[i], copied(all[i]));
        if (whole && all == QStringList(file) + Journals(path))
            return;
    }
    throw StoreError(Fehler::Gesperrt,
                     DateiSatz(path) + u"wird gerade von einem anderen Programm geändert."_s);
}

} // namespace paukfix
