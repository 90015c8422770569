// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungsordner.h"

#include "SafeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QString Zeitform = u"yyyy-MM-dd HH-mm-ss"_s;
const QString Endung = u".pzb"_s;

// The box's name, so short that whatever is joined to it makes a name that file systems allow.
QString Grundname(const QString &kartei)
{
    constexpr qsizetype Laengster = 100; // bytes
    QString name = QFileInfo(kartei).completeBaseName();
    while (QFile::encodeName(name).size() > Laengster)
        name.chop(name.size() > 1 && name.back().isLowSurrogate() ? 2 : 1);
    return name;
}

void OrdnerAnlegen(const QString &pfad)
{
    if (mkdir(QFile::encodeName(pfad).constData(), 0777) == 0)
        SyncDirectory(QFileInfo(pfad).path());
    else if (errno != EEXIST)
        ThrowFileError(errno, pfad);
}

} // namespace

QString Sicherungsordner::Von(const QString &kartei) const
{
    const QString platz = Resolved(kartei);
    const auto ordner = [&](const QString &ort) {
        const QByteArray marke =
            QCryptographicHash::hash(QFile::encodeName(ort), QCryptographicHash::Md5).toHex().left(8);
        return u"%1/%2 (%3)"_s.arg(wurzel_, Grundname(platz), QString::fromLatin1(marke));
    };
    const QString neben = Resolved(QFileInfo(wurzel_).absolutePath()) + '/'_L1;
    QString frueher = ordner(platz); // as earlier versions called that of each box
    if (!platz.startsWith(neben) || QFileInfo(frueher).isDir())
        return frueher;
    return ordner(platz.mid(neben.size()));
}

QString Sicherungsordner::Anlegen(const QString &kartei) const
{
    OrdnerAnlegen(wurzel_);
    QString ordner = Von(kartei);
    OrdnerAnlegen(ordner);
    return ordner;
}

Sicherungsliste Sicherungsordner::Liste(const QString &kartei) const
{
    Sicherungsliste liste;
    const QFileInfoList dateien =
        QDir(Von(kartei)).entryInfoList({u"*"_s + Endung}, QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo &datei : dateien) {
        const QString name = datei.completeBaseName();
        const QDateTime zeit = QDateTime::fromString(name.right(Zeitform.size()), Zeitform);
        if (zeit.isValid())
            liste.append({datei.filePath(), zeit, datei.size()});
    }
    std::sort(liste.begin(), liste.end(),
              [](const Sicherung &eine, const Sicherung &andere) { return eine.zeit > andere.zeit; });
    return liste;
}

QString Sicherungsordner::Name(const QString &kartei, const QDateTime &zeit) const
{
    const QString ordner = Von(kartei);
    QDateTime frei = zeit;
    for (;;) {
        QString name =
            u"%1/%2 %3%4"_s.arg(ordner, Grundname(Resolved(kartei)), frei.toString(Zeitform), Endung);
        if (!IsNameTaken(name))
            return name;
        frei = frei.addSecs(1);
    }
}

qint64 Sicherungsordner::Groesse() const
{
    qint64 summe = 0;
    QDirIterator dateien(wurzel_, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (dateien.hasNext()) {
        dateien.next();
        summe += dateien.fileInfo().size();
    }
    return summe;
}

} // namespace paukfix
