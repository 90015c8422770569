// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SafeFile.h"

#include "FileHandle.h"
#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

Bytes BytesOf(const QByteArray &content)
{
    return {reinterpret_cast<const std::uint8_t *>(content.constData()),
            static_cast<std::size_t>(content.size())};
}

} // namespace

void WithPlaceNamed(const QString &temporary, const QString &place, const std::function<void()> &step)
{
    try {
        step();
    } catch (const StoreError &error) {
        throw StoreError(error.Number(), error.Text().replace(temporary, place));
    }
}

void ThrowFileError(int error, const QString &path)
{
    switch (error) {
    case ENOENT:
        if (QFileInfo(QFileInfo(path).path()).isDir())
            throw StoreError(Fehler::DateiNichtGefunden, u"Datei nicht gefunden: %1"_s.arg(path));
        [[fallthrough]];
    case ENOTDIR:
        throw StoreError(Fehler::PfadNichtGefunden, u"Pfad nicht gefunden: %1"_s.arg(path));
    case EACCES:
    case EPERM:
        throw StoreError(Fehler::NichtErlaubt, u"Zugriff verweigert: %1"_s.arg(path));
    case EROFS:
        throw StoreError(Fehler::NichtErlaubt, u"Der Datenträger ist schreibgeschützt: %1"_s.arg(path));
    case EISDIR:
        throw StoreError(Fehler::NichtErlaubt, u"Das ist ein Verzeichnis: %1"_s.arg(path));
    case ENXIO:
    case ENODEV:
        throw StoreError(Fehler::NichtErlaubt, u"Das ist keine gewöhnliche Datei: %1"_s.arg(path));
    case ENAMETOOLONG:
        throw StoreError(Fehler::PfadNichtGefunden, u"Der Dateiname ist zu lang: %1"_s.arg(path));
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        throw StoreError(Fehler::DatentraegerVoll, u"Der Datenträger ist voll: %1"_s.arg(path));
    case ENOMEM:
        throw StoreError(Fehler::ZuWenigSpeicher, u"Zu wenig Speicher: %1"_s.arg(path));
    case EMFILE:
    case ENFILE:
        throw StoreError(Fehler::ZuVieleDateien, u"Zu viele Dateien sind offen: %1"_s.arg(path));
    default:
        throw StoreError(Fehler::GeraeteFehler,
                         u"Ein-/Ausgabefehler (%1): %2"_s.arg(QString::number(error), path));
    }
}

QByteArray ReadFile(const QString &path, qint64 limit)
{
    const FileHandle file = OpenRegular(path);
    QByteArray content;
    while (content.size() <= limit) {
        char buffer[16384];
        const ssize_t count = read(file.Get(), buffer, sizeof buffer);
        if (count == 0)
            return content;
        if (count > 0)
            content.append(buffer, count);
        else if (errno != EINTR)
            ThrowFileError(errno, path);
    }
    throw StoreError(Fehler::ZuWenigSpeicher, u"Die Datei ist zu groß (mehr als %1 KB): %2"_s.arg(
                                                  QString::number(limit / 1024), path));
}

void WriteFileSynced(const QString &path, const QByteArray &content, mode_t mode)
{
    const FileHandle file = OpenFile(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
    WriteAll(file, BytesOf(content), path);
    Sync(file, path);
}

void SyncFile(const QString &path)
{
    Sync(OpenFile(path, O_RDONLY), path);
}

void SyncDirectory(const QString &path)
{
    const FileHandle directory = OpenFile(path, O_RDONLY | O_DIRECTORY);
    if (fsync(directory.Get()) != 0 && errno != EINVAL && errno != ENOTSUP)
        ThrowFileError(errno, path);
}

void ReplaceFile(const QString &temporary, const QString &target)
{
    {
        const FileHandle file = OpenFile(temporary, O_RDONLY);
        struct stat old = {};
        if (stat(QFile::encodeName(target).constData(), &old) == 0) {
            // File systems without permissions refuse this; the content is what matters.
            (void)fchmod(file.Get(), old.st_mode & 07777);
        }
        Sync(file, temporary);
    }
    RenameSynced(temporary, target);
}

void RenameSynced(const QString &from, const QString &to)
{
    if (rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        ThrowFileError(errno, to);
    SyncDirectory(QFileInfo(to).path());
}

void RenameFresh(const QString &from, const QString &to)
{
    const QByteArray before = QFile::encodeName(from);
    const QByteArray after = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, before.constData(), AT_FDCWD, after.constData(), RENAME_NOREPLACE) == 0)
        return;
    int error = errno;
    if (error == EINVAL || error == ENOSYS) { // a file system that does not know the flag
        error = EEXIST;
        if (!IsNameTaken(to))
            error = rename(before.constData(), after.constData()) == 0 ? 0 : errno;
    }
    if (error == EEXIST)
        throw StoreError(Fehler::NichtErlaubt,
                         u"Unter diesem Namen liegt inzwischen eine andere Datei: %1"_s.arg(to));
    if (error != 0)
        ThrowFileError(error, to);
}

void RewriteFile(const QString &target, const QByteArray &content)
{
    const QString canonical = QFileInfo(target).canonicalFilePath();
    const QString file = canonical.isEmpty() ? target : canonical;
    const QString temporary = file + u".tmp"_s;
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
    const FileHandle source = OpenRegular(from);
    const FileHandle copy = OpenFile(to, O_WRONLY | O_CREAT | O_EXCL);
    std::vector<std::uint8_t> buffer(1 << 20);
    for (;;) {
        const ssize_t count = read(source.Get(), buffer.data(), buffer.size());
        if (count == 0)
            return;
        if (count > 0)
            WriteAll(copy, Bytes(buffer).first(static_cast<std::size_t>(count)), to);
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
    const QString temporary = name + u".tmp"_s;
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

bool SameFile(const QString &one, const QString &other, Links links)
{
    const auto look = links == Links::Followed ? stat : lstat;
    struct stat first = {};
    struct stat second = {};
    return look(QFile::encodeName(one).constData(), &first) == 0 &&
           look(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

bool IsNameTaken(const QString &path)
{
    struct stat status = {};
    return lstat(QFile::encodeName(path).constData(), &status) == 0;
}

QString BesideName(const QString &path, const QString &suffix)
{
    constexpr qsizetype Longest = 255 - 8; // bytes; room for "-journal"
    const QFileInfo info(path);
    QString name = info.fileName();
    while (!name.isEmpty() && QFile::encodeName(name + suffix).size() > Longest)
        name.chop(name.size() > 1 && name.back().isLowSurrogate() ? 2 : 1);
    return info.dir().filePath(name + suffix);
}

DirectoryLock::DirectoryLock(const QString &directory)
    : directory_(directory),
      descriptor_(open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor_ < 0) {
        const int error = errno;
        ThrowFileError(error == ENOENT ? ENOTDIR : error, directory);
    }
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (std::chrono::steady_clock::now() > patience) {
            close(descriptor_);
            throw StoreError(
                Fehler::Gesperrt,
                u"Ein anderes Programm schreibt gerade in dieses Verzeichnis: %1"_s.arg(directory));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

DirectoryLock::~DirectoryLock()
{
    close(descriptor_);
}

qint64 FreeBytes(const QString &directory)
{
    struct statvfs disk = {};
    if (statvfs(QFile::encodeName(directory).constData(), &disk) != 0)
        return -1;
    return static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize);
}

QString Resolved(const QString &place)
{
    const QFileInfo info(place);
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

} // namespace paukfix
