// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Mediendatei.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace paukfix {

QString BlosserName(const QString &name)
{
    return name.mid(std::max(name.lastIndexOf(u'\\'), name.lastIndexOf(u'/')) + 1);
}

QString Mediendatei(const QString &verzeichnis, const QString &name)
{
    constexpr int MaxNamen = 50'000;
    const QString gesucht = BlosserName(name);
    QString genau = QDir::toNativeSeparators(QDir(verzeichnis).filePath(gesucht));
    if (gesucht.isEmpty() || QFileInfo::exists(genau))
        return genau;
    QString gefunden;
    QDirIterator namen(verzeichnis, QDir::Files | QDir::Hidden);
    for (int anzahl = 0; namen.hasNext(); ++anzahl) {
        // Of a part of the names, another one would be taken each time.
        if (anzahl == MaxNamen)
            return genau;
        namen.next();
        const QString kandidat = namen.fileName();
        if (kandidat.compare(gesucht, Qt::CaseInsensitive) == 0 &&
            (gefunden.isEmpty() || kandidat < gefunden))
            gefunden = kandidat;
    }
    return gefunden.isEmpty() ? genau : QDir::toNativeSeparators(QDir(verzeichnis).filePath(gefunden));
}

} // namespace paukfix
