// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FirstStart.h"

#include "EngineLocks.h"
#include "FileHandle.h"
#include "KonfigFormat.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MaxShippedFile = qint64{256} * 1024 * 1024; // bytes
constexpr QDir::Filters Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

bool HasEntry(const QString &directory, const QString &name)
{
    const QFileInfo info(In(directory, name));
    return info.exists() || info.isSymLink();
}

void MakeDirectory(const QString &path)
{
    if (!QDir().mkpath(path))
        ThrowFileError(errno, path);
}

void Rename(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        ThrowFileError(errno, to);
}

QString SamplesOf(const ProgramPlaces &places)
{
    return In(places.installed, u"beispiele"_s);
}

// Whether the place is `directory` or lies in it.
bool Inside(const QString &place, const QString &directory)
{
    const auto canonical = [](const QString &path) {
        const QString found = QFileInfo(path).canonicalFilePath();
        return (found.isEmpty() ? path : found) + '/'_L1;
    };
    return canonical(place).startsWith(canonical(directory));
}

// `settings` with the recent files that have been moved from `former` under the names that they have in
// `own`.
QByteArray WithNewNames(const QByteArray &settings, const ProgramPlaces &places)
{
    QByteArray result;
    for (const KonfigLine &line : KonfigLines(settings)) {
        const QString prefix = places.former + '/'_L1;
        const QString name = NameFromLine(line.text);
        const QString rest = name.mid(prefix.size());
        if (name.startsWith(prefix) && !HasEntry(places.former, rest) && HasEntry(places.own, rest))
            result += LineFromName(In(places.own, rest)) + line.whole.sliced(line.text.size()).toByteArray();
        else
            result += line.whole;
    }
    return result;
}

// The settings to begin with: the shipped ones; throws where there are none. Where an installation has just
// overwritten the user's, the copy that the program has kept beside them.
QByteArray FirstKonfig(const ProgramPlaces &places)
{
    const QString konfig = u"konfig.dat"_s;
    const QString copy = u"konfig.new"_s;
    if (IsShared(places) && HasFile(places.former, copy)) {
        const QByteArray settings = ReadFile(In(places.former, copy), MaxShippedFile);
        if (!settings.isEmpty())
            return WithNewNames(settings, places);
    }
    const bool running = !HasFile(places.installed, konfig) && HasFile(places.running, konfig);
    return ReadFile(In(running ? places.running : places.installed, konfig), MaxShippedFile);
}

QString StageOf(const ProgramPlaces &places)
{
    return In(places.own, u".einrichtung"_s);
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
    const QString aside = In(places.own, u"Frühere Programmdateien"_s);
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

// Throws 3045 where somebody has a card file in the directory open: its journal would be made where the file
// is not any more.
void CheckNoneIsOpen(const QString &directory)
{
    QDirIterator files(directory, {u"*.pzb"_s}, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QByteArray name = QFile::encodeName(path);
        int type = F_WRLCK;
        FileHandle file(open(name.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
        if (file.Get() < 0) {
            type = F_RDLCK;
            file = FileHandle(open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        }
        if (file.Get() >= 0)
            LockCardFile(file.Get(), type, path);
    }
}

} // namespace

QString In(const QString &directory, const QString &name)
{
    return directory + '/'_L1 + name;
}

bool HasFile(const QString &directory, const QString &name)
{
    return QFileInfo(In(directory, name)).isFile();
}

bool IsShared(const ProgramPlaces &places)
{
    return SameFile(places.former, places.installed);
}

QStringList FormerNames(const ProgramPlaces &places)
{
    static const QRegularExpression shipped(
        u"\\A(beispiele|handbuch|konfig\\.(dat|new)|ueber\\.rtf|Applause\\.wav|lbox\\d\\d\\.jpg|("
        u"face\\d\\d|paukfix)\\.ico)\\z"_s);
    const QString settings = u"konfig.dat"_s;
    QStringList names = QDir(places.former).entryList(Everything);
    if (IsShared(places))
        names.removeIf([](const QString &name) { return shipped.match(name).hasMatch(); });
    else if (names.removeAll(settings) > 0)
        names << settings;
    return names;
}

void FillOwn(const ProgramPlaces &places)
{
    const QString stage = StageOf(places);
    if (HasFile(places.own, u"konfig.dat"_s) && !QFileInfo::exists(stage))
        return;
    const QByteArray settings = FirstKonfig(places);
    MakeDirectory(places.own);
    const DirectoryLock lock(places.own);
    const QStringList samples = QDir(SamplesOf(places)).entryList(QDir::Files);
    // Settings that are gone, but not at the first start: their reader says so and makes them again.
    const bool used = HasFile(places.own, u"konfig.new"_s) ||
                      std::any_of(samples.begin(), samples.end(),
                                  [&places](const QString &name) { return HasEntry(places.own, name); });
    if (used && !QFileInfo::exists(stage))
        return;
    const auto put = [&](const QString &name, const QByteArray &content) {
        if (!HasEntry(places.own, name)) {
            // Written, not copied: the user's own file is not read-only because the shipped one is.
            WriteFileSynced(In(stage, name), content);
            Rename(In(stage, name), In(places.own, name));
        }
    };
    MakeDirectory(stage);
    put(u"konfig.dat"_s, settings);
    for (const QString &name : samples)
        put(name, ReadFile(In(SamplesOf(places), name), MaxShippedFile));
    QDir(stage).removeRecursively();
    SyncDirectory(places.own);
}

bool MoveFormer(const ProgramPlaces &places)
{
    const QFileInfo former(places.former);
    const bool shared = IsShared(places);
    const QStringList names = FormerNames(places);
    if (!former.isDir() || (former.isSymLink() && !shared) || names.isEmpty())
        return false;
    const bool entangled =
        Inside(places.own, places.former) || Inside(places.running, places.former) ||
        (!shared && (Inside(places.installed, places.former) || Inside(places.former, places.installed)));
    if (entangled)
        return false;
    CheckNoneIsOpen(places.former);
    MakeDirectory(places.own);
    const DirectoryLock lock(places.own);
    const bool taken = std::any_of(names.begin(), names.end(),
                                   [&places](const QString &name) { return HasEntry(places.own, name); });
    if (taken || !MayWrite(places.former) || !OnOneFileSystem(places.former, places.own)) {
        rmdir(QFile::encodeName(places.own).constData()); // if it is empty
        return false;
    }
    if (shared)
        MakeDirectory(StageOf(places)); // for FillOwn
    for (const QString &name : names)
        if (name != u"konfig.dat"_s && !shared && HasFile(places.former, name) &&
            HasFile(places.installed, name))
            PutAside(places, name);
        else
            Rename(In(places.former, name), In(places.own, name));
    SyncDirectory(places.own);
    // Names in the list of recent files, and those that the desktop remembers, go on leading there.
    if (!shared && rmdir(QFile::encodeName(places.former).constData()) == 0)
        QFile::link(places.own, places.former);
    return true;
}

} // namespace paukfix
