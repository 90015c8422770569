// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Medienwahl.h"

#include "Mediendatei.h"
#include "SafeFile.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QLocale>

namespace paukfix {

using namespace Qt::StringLiterals;

Medienwahl::Medienwahl(QWidget *parent) : QCheckBox(parent)
{
    setObjectName(u"chkMedien"_s);
    setToolTip(u"Karten finden Bilder und Töne nur im Ordner ihrer Kartei"_s);
    setChecked(true);
    NichtsAnbieten();
}

void Medienwahl::NichtsAnbieten()
{
    setText(u"&Bilder und Töne mitkopieren"_s);
    setAccessibleName(QString(text()).remove(u'&'));
    angeboten_ = false;
    setEnabled(false);
}

void Medienwahl::Anbieten(const std::optional<QList<MediaName>> &medien, const QString &von,
                          const QString &nach)
{
    NichtsAnbieten();
    if ((medien && medien->isEmpty()) || !QFileInfo(nach).isDir() || SameFile(von, nach))
        return;
    if (medien) {
        QHash<QString, qint64> dort; // bytes of the files, by their names as they are looked for
        QDirIterator dateien(von, QDir::Files | QDir::Hidden);
        while (dateien.hasNext()) {
            dateien.next();
            dort.insert(dateien.fileName().toCaseFolded(), dateien.fileInfo().size());
        }
        int anzahl = 0;
        qint64 bytes = 0;
        for (const MediaName &medium : *medien) {
            const QString name = BlosserName(medium.name);
            const auto datei = dort.constFind(name.toCaseFolded());
            if (datei == dort.cend() || !IstMedienname(name))
                continue;
            ++anzahl;
            bytes += *datei;
            dort.erase(datei);
        }
        setText(
            text() +
            u" (%1, %2)"_s.arg(
                anzahl == 1 ? u"1 Datei"_s : u"%1 Dateien"_s.arg(anzahl),
                QLocale(QLocale::German).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat)));
        setAccessibleName(QString(text()).remove(u'&'));
    }
    angeboten_ = true;
    setEnabled(true);
}

} // namespace paukfix
