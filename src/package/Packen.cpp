// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Packen.h"

#include "FreshFile.h"
#include "Mediendatei.h"
#include "Medienmitnahme.h"
#include "Paketnamen.h"
#include "ZipReader.h"
#include "ZipWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

void Schreiben(const QString &kartei, const Packliste &liste, const QString &pfad, ZipWriter::Packing art,
               const Progress &progress)
{
    const QFileInfo info(kartei);
    ZipWriter paket(pfad);
    paket.AddFile(IstKarteiname(info.fileName()) ? info.fileName() : u"Kartei.pzb"_s, kartei, art);
    for (const QString &name : liste.dateien) {
        const bool gepackt = QFileInfo(name).suffix().startsWith("jp"_L1, Qt::CaseInsensitive);
        paket.AddFile(name, info.dir().filePath(name), gepackt ? ZipWriter::Packing::Store : art);
    }
    paket.Finish(progress);
}

} // namespace

bool IstPaket(const QString &pfad)
{
    return pfad.endsWith(Paketendung, Qt::CaseInsensitive);
}

Packliste PacklisteVon(const QString &kartei, const QList<MediaName> &medien, const Progress &progress)
{
    Packliste liste;
    QStringList fehlend;
    QSet<QString> dabei;
    int gesehen = 0;
    for (const MediaName &medium : medien) {
        if (progress)
            progress(gesehen++, static_cast<int>(medien.size()));
        const Fundstelle fund = MediumSuchen(QFileInfo(kartei).absolutePath(), medium.name);
        const QFileInfo datei(fund.pfad);
        if (!fund.hindernis.isEmpty()) {
            fehlend << MedienZeile(medium.name, fund.hindernis, medium.cards);
        } else if (!dabei.contains(datei.fileName())) {
            dabei.insert(datei.fileName());
            liste.dateien << datei.fileName();
            liste.bytes += datei.size();
        }
    }
    liste.fehlend = static_cast<int>(fehlend.size());
    if (!fehlend.isEmpty())
        liste.bericht =
            u"Nicht im Paket sind diese Bilder und Töne, die Karten nennen:\n\n"_s + fehlend.join(u'\n');
    return liste;
}

void Packen(const QString &kartei, const Packliste &liste, const QString &ziel, const Progress &progress)
{
    FreshFile neu(ziel);
    neu.Make([&](const QString &pfad) {
        try {
            Schreiben(kartei, liste, pfad, ZipWriter::Packing::Deflate, progress);
            const ZipReader lesbar(pfad);
        } catch (const StoreError &fehler) {
            // What packs to a hair's breadth would be taken for a package made to harm.
            if (fehler.Number() != Fehler::NichtErlaubt)
                throw;
            QFile::remove(pfad);
            Schreiben(kartei, liste, pfad, ZipWriter::Packing::Store, progress);
        }
    });
    neu.TakePlace();
}

} // namespace paukfix
