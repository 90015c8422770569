// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SafeFile.h"

#include "CardFile.h"
#include "FileHandle.h"
#include "JournalFile.h"
#include "StoreError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// Opened without waiting, as a pipe would for its other end.
class Descriptor
{
public:
    Descriptor(const QString &path, int flags)
        : file_(open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NONBLOCK, 0666))
    {
        if (file_.Get() < 0) {
            ThrowFileError(errno, path);
        }
    }

    int Number() const { return file_.Get(); }

private:
    FileHandle file_;
};

// A pipe or a device may never end.
void CheckRegular(const Descriptor &file, const QString &path)
{
    struct stat status = {};
    if (fstat(file.Number(), &status) != 0) {
        ThrowFileError(errno, path);
    }
    if (!S_ISREG(status.st_mode)) {
        ThrowFileError(S_ISDIR(status.st_mode) ? EISDIR : ENXIO, path);
    }
}

void Sync(const Descriptor &file, const QString &path)
{
    if (fsync(file.Number()) != 0) {
        ThrowFileError(errno, path);
    }
}

void WriteAll(const Descriptor &file, const char *data, size_t size, const QString &path)
{
    for (size_t done = 0; done < size;) {
        const ssize_t count = write(file.Number(), data + done, size - done);
        if (count >= 0) {
            done += static_cast<size_t>(count);
        } else if (errno != EINTR) {
            ThrowFileError(errno, path);
        }
    }
}

// Users know the place, not the name under which a file is made beside it.
void WithPlaceNamed(const QString &temporary, const QString &place, const std::function<void()> &step)
{
    try {
        step();
    } catch (const StoreError &error) {
        throw StoreError(error.Number(), error.Text().replace(temporary, place));
    }
}

} // namespace

void ThrowFileError(int error, const QString &path)
{
    switch (error) {
    case ENOENT:
        if (QFileInfo(QFileInfo(path).path()).isDir()) {
            throw StoreError(Fehler::DateiNichtGefunden,
                             QStringLiteral("Datei nicht gefunden: %1").arg(path));
        }
        [[fallthrough]];
    case ENOTDIR:
        throw StoreError(Fehler::PfadNichtGefunden, QStringLiteral("Pfad nicht gefunden: %1").arg(path));
    case EACCES:
    case EPERM:
        throw StoreError(Fehler::NichtErlaubt, QStringLiteral("Zugriff verweigert: %1").arg(path));
    case EROFS:
        throw StoreError(Fehler::NichtErlaubt,
                         QStringLiteral("Der Datenträger ist schreibgeschützt: %1").arg(path));
    case EISDIR:
        throw StoreError(Fehler::NichtErlaubt, QStringLiteral("Das ist ein Verzeichnis: %1").arg(path));
    case ENXIO:
    case ENODEV:
        throw StoreError(Fehler::NichtErlaubt,
                         QStringLiteral("Das ist keine gewöhnliche Datei: %1").arg(path));
    case ENAMETOOLONG:
        throw StoreError(Fehler::PfadNichtGefunden,
                         QStringLiteral("Der Dateiname ist zu lang: %1").arg(path));
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        throw StoreError(Fehler::DatentraegerVoll, QStringLiteral("Der Datenträger ist voll: %1").arg(path));
    case ENOMEM:
        throw StoreError(Fehler::ZuWenigSpeicher, QStringLiteral("Zu wenig Speicher: %1").arg(path));
    case EMFILE:
    case ENFILE:
        throw StoreError(Fehler::ZuVieleDateien, QStringLiteral("Zu viele Dateien sind offen: %1").arg(path));
    default:
        throw StoreError(Fehler::GeraeteFehler,
                         QStringLiteral("Ein-/Ausgabefehler (%1): %2").arg(QString::number(error), path));
    }
}

QByteArray ReadFile(const QString &path, qint64 limit)
{
    const Descriptor file(path, O_RDONLY);
    CheckRegular(file, path);
    QByteArray content;
    while (content.size() <= limit) {
        char buffer[16384];
        const ssize_t count = read(file.Number(), buffer, sizeof buffer);
        if (count == 0) {
            return content;
        }
        if (count > 0) {
            content.append(buffer, count);
        } else if (errno != EINTR) {
            ThrowFileError(errno, path);
        }
    }
    throw StoreError(Fehler::ZuWenigSpeicher, QStringLiteral("Die Datei ist zu groß (mehr als %1 KB): %2")
                                                  .arg(QString::number(limit / 1024), path));
}

void WriteFileSynced(const QString &path, const QByteArray &content)
{
    const Descriptor file(path, O_WRONLY | O_CREAT | O_TRUNC);
    WriteAll(file, content.constData(), static_cast<size_t>(content.size()), path);
    Sync(file, path);
}

void SyncFile(const QString &path)
{
    Sync(Descriptor(path, O_RDONLY), path);
}

void SyncDirectory(const QString &path)
{
    const Descriptor directory(path, O_RDONLY | O_DIRECTORY);
    if (fsync(directory.Number()) != 0 && errno != EINVAL && errno != ENOTSUP) {
        ThrowFileError(errno, path);
    }
}

void ReplaceFile(const QString &temporary, const QString &target)
{
    {
        const Descriptor file(temporary, O_RDONLY);
        struct stat old = {};
        if (stat(QFile::encodeName(target).constData(), &old) == 0) {
            // File systems without permissions refuse this; the content is what matters.
            (void)fchmod(file.Number(), old.st_mode & 07777);
        }
        Sync(file, temporary);
    }
    if (rename(QFile::encodeName(temporary).constData(), QFile::encodeName(target).constData()) != 0) {
        ThrowFileError(errno, target);
    }
    SyncDirectory(QFileInfo(target).path());
}

void RewriteFile(const QString &target, const QByteArray &content)
{
    const QString canonical = QFileInfo(target).canonicalFilePath();
    const QString file = canonical.isEmpty() ? target : canonical;
    const QString temporary = file + QStringLiteral(".tmp");
    try {
        WithPlaceNamed(temporary, file, [&] {
            WriteFileSynced(temporary, content);
            ReplaceFile(temporary, file);
        });
    } catch (...) {
        QFile::remove(temporary);
        throw;
    }
}

void CopyFile(const QString &from, const QString &to)
{
    const Descriptor source(from, O_RDONLY);
    CheckRegular(source, from);
    const Descriptor copy(to, O_WRONLY | O_CREAT | O_EXCL);
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const ssize_t count = read(source.Number(), buffer.data(), buffer.size());
        if (count == 0)
            return;
        if (count > 0)
            WriteAll(copy, buffer.data(), static_cast<size_t>(count), to);
        else if (errno != EINTR)
            ThrowFileError(errno, from);
    }
}

void KeepUnderName(const QString &file, const QString &name)
{
    if (link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) == 0) {
        SyncDirectory(QFileInfo(name).path());
        return;
    }
    if (errno == EEXIST)
        ThrowFileError(errno, name);
    const QString temporary = name + QStringLiteral(".tmp");
    QFile::remove(temporary);
    try {
        WithPlaceNamed(temporary, name, [&] {
            CopyFile(file, temporary);
            ReplaceFile(temporary, name);
        });
    } catch (const StoreError &) {
        QFile::remove(temporary);
        throw;
    }
}

bool SameFile(const QString &one, const QString &other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(QFile::encodeName(one).constData(), &first) == 0 &&
           stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

DirectoryLock::DirectoryLock(const QString &directory)
    : descriptor_(open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor_ < 0) {
        const int error = errno;
        ThrowFileError(error == ENOENT ? ENOTDIR : error, directory);
    }
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (std::chrono::steady_clock::now() > patience) {
            close(descriptor_);
            throw StoreError(Fehler::Gesperrt,
                             QStringLiteral("Ein anderes Programm schreibt gerade in dieses Verzeichnis: %1")
                                 .arg(directory));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

DirectoryLock::~DirectoryLock()
{
    close(descriptor_);
}

QString Resolved(const QString &place)
{
    const QFileInfo info(place);
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

void ClearFreshFiles(const QString &directory) noexcept
{
    const int lock = open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock < 0)
        return;
    // Where a file is just being made the lock is taken.
    if (flock(lock, LOCK_EX | LOCK_NB) == 0) {
        const QDir place(directory);
        for (const QString &name :
             place.entryList({QStringLiteral(".paukfix-*.neu"), QStringLiteral(".paukfix-*.neu-journal")},
                             QDir::Files | QDir::Hidden))
            QFile::remove(place.filePath(name));
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
    path_ = QStringLiteral("%1/.paukfix-%2.neu").arg(info.absolutePath(), QLatin1String(mark));
    Clear();
}

FreshFile::~FreshFile()
{
    Clear();
}

void FreshFile::Clear() const
{
    QFile::remove(path_);
    QFile::remove(path_ + QStringLiteral("-journal"));
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
        for (const char *suffix : companionSuffixes)
            QFile::remove(place_ + QLatin1String(suffix));
        ReplaceFile(path_, place_);
    });
}
