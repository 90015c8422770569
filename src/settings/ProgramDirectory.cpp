// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgramDirectory.h"

#include "FirstStart.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

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
    if (!QDir(documents).exists() && QDir::home().exists(u"Dokumente"_s))
        documents = QDir::home().filePath(u"Dokumente"_s);
    return In(documents, u"Paukfix"_s);
}

QString FormerOwnDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/paukfix"_s;
}

ProgramDirectory FindProgramDirectory(const ProgramPlaces &given)
{
    const ProgramPlaces places{QDir::cleanPath(given.running), QDir::cleanPath(given.installed),
                               QDir::cleanPath(given.own), QDir::cleanPath(given.former)};
    const QString settings = u"konfig.dat"_s;
    ProgramDirectory found{places.own, {places.installed, places.running}, {}, true};
    if (HasFile(places.running, settings) && MayWrite(places.running)) {
        found.path = places.running;
        return found;
    }
    const bool shared = IsShared(places);
    try {
        if (!HasFile(places.own, settings)) {
            if (MoveFormer(places)) {
                found.message = u"Ihre Karteien und Einstellungen liegen jetzt in „%1“. Bisher "
                                u"lagen sie in „%2“."_s.arg(places.own, places.former);
                if (!shared)
                    return found;
            } else if (!shared && HasFile(places.former, settings) && !SameFile(places.former, places.own)) {
                found.path = places.former;
                return found;
            } else if (shared && !FormerNames(places).isEmpty()) {
                found.message = u"Ihre bisherigen Karteien liegen noch in „%1“: Sie konnten "
                                u"nicht nach „%2“ gebracht werden."_s.arg(places.former, places.own);
            }
        }
        FillOwn(places);
    } catch (const StoreError &error) {
        if (HasFile(places.own, settings)) {
            found.message = u"Die Beispielkarteien konnten nicht angelegt werden: "_s;
        } else if (!shared && HasFile(places.former, settings)) {
            found.message = u"Ihre Karteien konnten nicht alle nach „%1“ gebracht werden: "_s.arg(places.own);
            found.path = places.former;
        } else {
            found.message = u"Fehler bei Form Intro Load: Die Einstellungen können nicht "
                            u"gespeichert werden: "_s;
            found.keepsSettings = false;
            found.path = HasFile(places.installed, settings) ? places.installed : places.running;
        }
        found.message += error.Text();
    }
    return found;
}

QString MovedAlong(const QString &file, const QString &directory)
{
    if (QFileInfo::exists(QFileInfo(file).absolutePath()))
        return file;
    const QString name = u'/' + QFileInfo(directory).fileName() + u'/';
    for (qsizetype at = file.lastIndexOf(name); at >= 0; at = at > 0 ? file.lastIndexOf(name, at - 1) : -1)
        if (QString now = In(directory, file.mid(at + name.size())); QFileInfo(now).isFile())
            return now;
    return file;
}

} // namespace paukfix
