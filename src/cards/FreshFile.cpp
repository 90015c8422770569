// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FreshFile.h"

#include "Beilagen.h"
#include "CardFile.h"
#include "FileHandle.h"
#include "JournalFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

void ClearFreshFiles(const QString &directory) noexcept
{
    const int lock = open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock < 0)
        return;
    // Where a file is just being made the lock is taken.
    if (flock(lock, LOCK_EX | LOCK_NB) == 0) {
        BeilagenAufraeumen(directory);
        const QDir place(directory);
        for (const QString &name :
             place.entryList({u".paukfix-*.neu"_s, u".paukfix-*.neu-journal"_s}, QDir::Files | QDir::Hidden))
            QFile::remove(place.filePath(name));
        // A zip file that was being written is at a name of its library's, a package unpacked in a directory.
        for (const QString &name : place.entryList({u".paukfix-*.neu.*"_s}, QDir::Files | QDir::Hidden))
            QFile::remove(place.filePath(name));
        for (const QString &name :
             place.entryList({u".paukfix-*.neu"_s}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks))
            QDir(place.filePath(name)).removeRecursively();
    }
    close(lock);
}

FreshFile::FreshFile(const QString &place) : place_(Resolved(place)), lock_(QFileInfo(place_).absolutePath())
{
    const QFileInfo info(place_);
    // The engine would only say that it cannot open the file.
    if (faccessat(AT_FDCWD, QFile::encodeName(info.absolutePath()).constData(), W_OK | X_OK, AT_EACCESS) != 0)
        ThrowFileError(errno, place_);
    // The same name for the same place, and short whatever the place is called.
    const QByteArray mark =
        QCryptographicHash::hash(QFile::encodeName(info.fileName()), QCryptographicHash::Md5).toHex();
    path_ = u"%1/.paukfix-%2.neu"_s.arg(info.absolutePath(), QLatin1String(mark));
    Clear();
}

FreshFile::~FreshFile()
{
    Clear();
}

void FreshFile::Clear() const
{
    QFile::remove(path_);
    QFile::remove(path_ + u"-journal"_s);
}

void FreshFile::Make(const std::function<void(const QString &path)> &make)
{
    WithPlaceNamed(path_, place_, [&] { make(path_); });
}

void FreshFile::TakePlace()
{
    WithPlaceNamed(path_, place_, [&] {
        SyncFile(path_);
        EndUnfinishedChange(place_); // the old file may have to stay, and would have lost its journal
        for (const char *suffix : CompanionSuffixes)
            QFile::remove(place_ + QLatin1String(suffix));
        ReplaceFile(path_, place_);
    });
}

} // namespace paukfix
