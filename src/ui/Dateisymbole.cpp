// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dateisymbole.h"

#include <QApplication>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStyle>

namespace paukfix {

using namespace Qt::StringLiterals;

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
        return datei.isRoot() ? u"Laufwerk"_s : u"Ordner"_s;
    if (datei.suffix().compare(u"pzb"_s, Qt::CaseInsensitive) == 0)
        return u"Kartei"_s;
    if (datei.suffix().compare(u"pzbz"_s, Qt::CaseInsensitive) == 0)
        return u"Gepackte Kartei"_s;
    const QMimeType art = ArtNachNamen(datei);
    return art.isDefault() ? u"%1-Datei"_s.arg(datei.suffix().toUpper()) : art.comment();
}

} // namespace paukfix
