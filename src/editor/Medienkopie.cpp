// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Medienkopie.h"

#include "Bild.h"
#include "Klangpruefung.h"
#include "SafeFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>
#include <QScopeGuard>
#include <QUrl>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int LaengsterName = 200; // characters; a card keeps 250
constexpr int Guete = 92;          // of a JPEG file

// A stored name ends where it was once parted from its directory.
QString Kartenname(const QString &datei)
{
    const QFileInfo info(QString(datei).replace(u'\\', u'_'));
    return info.completeBaseName().left(LaengsterName) + u'.' + info.suffix();
}

std::optional<Medium> MediumVon(const QString &pfad)
{
    const QFileInfo info(pfad);
    if (!info.isFile())
        return std::nullopt;
    const QString endung = info.suffix().toLower();
    if (endung == "jpg"_L1 || endung == "jpeg"_L1 || endung == "bmp"_L1)
        return Medium{Medienart::Bild, Kartenname(info.fileName()), pfad, {}};
    if (endung == "wav"_L1)
        return Medium{Medienart::Ton, Kartenname(info.fileName()), pfad, {}};
    return std::nullopt;
}

QByteArray AlsJpeg(const QImage &bild)
{
    QImage papier(bild.size(), QImage::Format_RGB32);
    papier.fill(Qt::white); // where it was transparent
    QPainter(&papier).drawImage(0, 0, bild);
    QBuffer datei;
    datei.open(QIODevice::WriteOnly);
    papier.save(&datei, "JPG", Guete);
    return datei.data();
}

} // namespace

QList<Medium> MedienVon(const QMimeData &mime)
{
    QList<Medium> medien;
    const QList<QUrl> orte = mime.urls();
    for (const QUrl &ort : orte)
        if (const auto medium = ort.isLocalFile() ? MediumVon(ort.toLocalFile()) : std::nullopt)
            medien << *medium;
    if (medien.isEmpty() && mime.hasImage() && !mime.hasText() && !mime.hasHtml())
        if (const auto bild = mime.imageData().value<QImage>(); !bild.isNull())
            medien << Medium{Medienart::Bild, u"Bild.jpg"_s, {}, bild};
    return medien;
}

void MediumPruefen(const Medium &medium)
{
    if (medium.art == Medienart::Ton)
        KlangPruefen(medium.pfad);
    else if (!medium.pfad.isEmpty())
        BildLesen(medium.pfad);
}

std::optional<QString> LiegtIn(const Medium &medium, const QString &verzeichnis)
{
    if (medium.pfad.isEmpty() || !SameFile(QFileInfo(medium.pfad).path(), verzeichnis))
        return std::nullopt;
    return QFileInfo(medium.pfad).fileName();
}

QString FreierName(const QString &verzeichnis, const QString &name)
{
    const QDir ort(verzeichnis);
    const QFileInfo info(name);
    QString frei = name;
    for (int nummer = 2; IsNameTaken(ort.filePath(frei)); ++nummer)
        frei = u"%1-%2.%3"_s.arg(info.completeBaseName()).arg(nummer).arg(info.suffix());
    return frei;
}

QString Danebenlegen(const Medium &medium, const QString &verzeichnis)
{
    const QDir ort(verzeichnis);
    QString name = FreierName(verzeichnis, medium.name);
    const QString platz = ort.filePath(name);
    const QString daneben = ort.filePath(u".paukfix-%1.tmp"_s.arg(QCoreApplication::applicationPid()));
    QFile::remove(daneben); // only this process could have made it
    const auto aufraeumen = qScopeGuard([&] { QFile::remove(daneben); });
    WithPlaceNamed(daneben, platz, [&] {
        if (medium.pfad.isEmpty()) {
            WriteFileSynced(daneben, AlsJpeg(medium.bild));
        } else {
            CopyFile(medium.pfad, daneben);
            SyncFile(daneben);
        }
    });
    KeepUnderName(daneben, platz);
    return name;
}

} // namespace paukfix
