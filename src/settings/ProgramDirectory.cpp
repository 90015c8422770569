// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgramDirectory.h"

#include "SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr qint64 MaxShippedFile = qint64{256} * 1024 * 1024; // bytes
constexpr QDir::Filters Everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;

bool MayWrite(const QString &path)
{
    return faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
}

bool HoldsFiles(const QString &directory)
{
    return QDir(directory).exists() && !QDir(directory).isEmpty(Everything);
}

void MakeDirectory(const QString &path)
{
    if (!QDir().mkpath(path)) {
        ThrowFileError(errno, path);
    }
}

// Copies are the user's own: written anew, so that they do not inherit the read-only mode.
void CopyTree(const QString &from, const QString &to)
{
    MakeDirectory(to);
    const QDir directory(from);
    if (!directory.isReadable()) {
        ThrowFileError(directory.exists() ? EACCES : ENOTDIR, from);
    }
    for (const QFileInfo &entry : directory.entryInfoList(Everything)) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isFile()) {
            WriteFileSynced(target, ReadFile(entry.filePath(), MaxShippedFile));
        } else if (entry.isDir() && !entry.isSymLink()) {
            CopyTree(entry.filePath(), target);
        }
    }
    SyncDirectory(to);
}

void Fill(const QString &user, const QString &installed)
{
    const QString parent = QFileInfo(user).path();
    MakeDirectory(parent);
    const DirectoryLock lock(parent);
    if (HoldsFiles(user)) {
        return; // another instance was quicker
    }
    // One name for every try: what a killed one left is cleared here.
    const QString temporary = user + QStringLiteral(".neu");
    QDir(temporary).removeRecursively();
    try {
        CopyTree(installed, temporary);
    } catch (...) {
        QDir(temporary).removeRecursively();
        throw;
    }
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(user).constData()) != 0) {
        ThrowFileError(errno, user);
    }
    SyncDirectory(parent);
}

} // namespace

QString UserDataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/paukfix");
}

QString ProgramDirectory(const QString &running, const QString &installed, const QString &user)
{
    const QFileInfo konfig(QDir::cleanPath(running) + QStringLiteral("/konfig.dat"));
    if (konfig.isFile() && MayWrite(konfig.filePath()) && MayWrite(konfig.path())) {
        return konfig.path();
    }
    QString own = QDir::cleanPath(user);
    if (!HoldsFiles(own)) {
        Fill(own, installed);
    }
    return own;
}
