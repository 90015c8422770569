// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgramDirectory.h"

#include "SafeFile.h"
#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 MaxShippedFile = qint64{256} * 1024 * 1024; // bytes
constexpr QDir::Filters Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QString In(const QString &directory, const QString &name)
{
    return directory + QLatin1Char('/') + name;
}

bool HasFile(const QString &directory, const QString &name)
{
    return QFileInfo(In(directory, name)).isFile();
}

bool HasEntry(const QString &directory, const QString &name)
{
    const QFileInfo info(In(directory, name));
    return info.exists() || info.isSymLink();
}

void MakeDirectory(const QString &path)
{
    if (!QDir().mkpath(path)) {
        ThrowFileError(errno, path);
    }
}

void Rename(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        ThrowFileError(errno, to);
    }
}

QString SamplesOf(const ProgramPlaces &places)
{
    return In(places.installed, QStringLiteral("beispiele"));
}

// The shipped settings; throws where there are none.
QByteArray ShippedKonfig(const ProgramPlaces &places)
{
    const QString konfig = QStringLiteral("konfig.dat");
    const bool running = !HasFile(places.installed, konfig) && HasFile(places.running, konfig);
    return ReadFile(In(running ? places.running : places.installed, konfig), MaxShippedFile);
}

// The first start: the settings and the sample boxes are put into the user's directory. A directory in it
// shows that this has begun; every file comes there whole, in one rename.
void Fill(const ProgramPlaces &places)
{
    const QString stage = In(places.own, QStringLiteral(".einrichtung"));
    if (HasFile(places.own, QStringLiteral("konfig.dat")) && !QFileInfo::exists(stage)) {
        return;
    }
    const QByteArray settings = ShippedKonfig(places);
    MakeDirectory(places.own);
    const DirectoryLock lock(places.own);
    const QStringList samples = QDir(SamplesOf(places)).entryList(QDir::Files);
    // Settings that are gone, but not at the first start: their reader says so and makes them again.
    const bool used = HasFile(places.own, QStringLiteral("konfig.new")) ||
                      std::any_of(samples.begin(), samples.end(),
                                  [&places](const QString &name) { return HasEntry(places.own, name); });
    if (used && !QFileInfo::exists(stage)) {
        return;
    }
    const auto put = [&](const QString &name, const QByteArray &content) {
        if (!HasEntry(places.own, name)) {
            // Written, not copied: the user's own file is not read-only because the shipped one is.
            WriteFileSynced(In(stage, name), content);
            Rename(In(stage, name), In(places.own, name));
        }
    };
    MakeDirectory(stage);
    put(QStringLiteral("konfig.dat"), settings);
    for (const QString &name : samples) {
        put(name, ReadFile(In(SamplesOf(places), name), MaxShippedFile));
    }
    QDir(stage).removeRecursively();
    SyncDirectory(places.own);
}

// Earlier versions copied the program's files for each user; such copies would hide the ones that an update
// brings. Those that are no mere copies are kept aside.
void PutAside(const ProgramPlaces &places, const QString &name)
{
    const QString old = In(places.former, name);
    if (ReadFile(old, MaxShippedFile) == ReadFile(In(places.installed, name), MaxShippedFile)) {
        QFile::remove(old);
        return;
    }
    const QString aside = In(places.own, QStringLiteral("Frühere Programmdateien"));
    MakeDirectory(aside);
    Rename(old, In(aside, name));
}

bool OnOneFileSystem(const QString &one, const QString &other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(QFile::encodeName(one).constData(), &first) == 0 &&
           stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev;
}

// Moves the user's files of an earlier version to where they are today; the old name leads there. False where
// there are none, or where they cannot all be moved: nothing is copied, for a card file and its journal must
// never be parted. A kill in between is made good by the next start, as the settings go last.
bool MoveFormer(const ProgramPlaces &places)
{
    const QFileInfo former(places.former);
    if (!former.isDir() || former.isSymLink() || QDir(places.former).isEmpty(Everything)) {
        return false;
    }
    MakeDirectory(places.own);
    const DirectoryLock lock(places.own);
    const QString settings = QStringLiteral("konfig.dat");
    QStringList names = QDir(places.former).entryList(Everything);
    if (names.removeAll(settings) > 0) {
        names << settings;
    }
    const bool taken = std::any_of(names.begin(), names.end(),
                                   [&places](const QString &name) { return HasEntry(places.own, name); });
    if (taken || !MayWrite(places.former) || !OnOneFileSystem(places.former, places.own)) {
        rmdir(QFile::encodeName(places.own).constData()); // if it is empty
        return false;
    }
    for (const QString &name : names) {
        if (name != settings && HasFile(places.former, name) && HasFile(places.installed, name)) {
            PutAside(places, name);
        } else {
            Rename(In(places.former, name), In(places.own, name));
        }
    }
    SyncDirectory(places.own);
    // Names in the list of recent files, and those that the desktop remembers, go on leading there.
    const QByteArray oldName = QFile::encodeName(places.former);
    if (rmdir(oldName.constData()) == 0) {
        (void)symlink(QFile::encodeName(places.own).constData(), oldName.constData());
    }
    return true;
}

} // namespace

bool MayWrite(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    return stat(name.constData(), &status) == 0 && (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 &&
           faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) == 0;
}

QString OwnDirectory()
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // Without the desktop's list of directories the toolkit takes the English name.
    if (!QDir(documents).exists() && QDir::home().exists(QStringLiteral("Dokumente"))) {
        documents = QDir::home().filePath(QStringLiteral("Dokumente"));
    }
    return In(documents, QStringLiteral("Paukfix"));
}

QString FormerOwnDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/paukfix");
}

ProgramDirectory FindProgramDirectory(const ProgramPlaces &given)
{
    const ProgramPlaces places{QDir::cleanPath(given.running), QDir::cleanPath(given.installed),
                               QDir::cleanPath(given.own), QDir::cleanPath(given.former)};
    const QString settings = QStringLiteral("konfig.dat");
    ProgramDirectory found{places.own, {places.installed, places.running}, {}, true};
    if (HasFile(places.running, settings) && MayWrite(places.running)) {
        found.path = places.running;
        return found;
    }
    try {
        if (!HasFile(places.own, settings)) {
            if (MoveFormer(places)) {
                found.message = QStringLiteral("Ihre Karteien und Einstellungen liegen jetzt in „%1“. Bisher "
                                               "lagen sie in „%2“.")
                                    .arg(places.own, places.former);
                return found;
            }
            if (HasFile(places.former, settings) && !SameFile(places.former, places.own)) {
                found.path = places.former;
                return found;
            }
        }
        Fill(places);
    } catch (const StoreError &error) {
        if (HasFile(places.own, settings)) {
            found.message = QStringLiteral("Die Beispielkarteien konnten nicht angelegt werden: ");
        } else if (HasFile(places.former, settings)) {
            found.message = QStringLiteral("Ihre Karteien konnten nicht alle nach „%1“ gebracht werden: ")
                                .arg(places.own);
            found.path = places.former;
        } else {
            found.message = QStringLiteral("Fehler bei Form Intro Load: Die Einstellungen können nicht "
                                           "gespeichert werden: ");
            found.keepsSettings = false;
            found.path = HasFile(places.installed, settings) ? places.installed : places.running;
        }
        found.message += error.Text();
    }
    return found;
}
