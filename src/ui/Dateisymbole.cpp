// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dateisymbole.h"

#include <QApplication>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStyle>

namespace {

QIcon Stilsymbol(QStyle::StandardPixmap welches)
{
    return QApplication::style()->standardIcon(welches);
}

QMimeType ArtNachNamen(const QFileInfo &datei)
{
    return QMimeDatabase().mimeTypeForFile(datei, QMimeDatabase::MatchExtension);
}

} // namespace

QIcon Dateisymbole::icon(IconType art) const
{
    switch (art) {
    case Computer:
        return Stilsymbol(QStyle::SP_ComputerIcon);
    case Desktop:
        return Stilsymbol(QStyle::SP_DesktopIcon);
    case Trashcan:
        return Stilsymbol(QStyle::SP_TrashIcon);
    case Network:
        return Stilsymbol(QStyle::SP_DriveNetIcon);
    case Drive:
        return Stilsymbol(QStyle::SP_DriveHDIcon);
    case Folder:
        return Stilsymbol(QStyle::SP_DirIcon);
    default:
        return Stilsymbol(QStyle::SP_FileIcon);
    }
}

QIcon Dateisymbole::icon(const QFileInfo &datei) const
{
    if (datei.isRoot())
        return icon(Drive);
    if (datei.isDir())
        return icon(Folder);
    const QMimeType art = ArtNachNamen(datei);
    return QIcon::fromTheme(art.iconName(), QIcon::fromTheme(art.genericIconName(), icon(File)));
}

QString Dateisymbole::type(const QFileInfo &datei) const
{
    if (datei.isDir())
        return datei.isRoot() ? QStringLiteral("Laufwerk") : QStringLiteral("Ordner");
    if (datei.suffix().compare(QStringLiteral("pzb"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("Kartei");
    const QMimeType art = ArtNachNamen(datei);
    return art.isDefault() ? QStringLiteral("%1-Datei").arg(datei.suffix().toUpper()) : art.comment();
}
