// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Auspacken.h"

#include "FileHandle.h"
#include "FreshFile.h"
#include "Mediendatei.h"
#include "Packen.h"
#include "Paketnamen.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "ZipReader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QScopeGuard>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// What of a package is unpacked, and what is not.
struct Inhaltsverzeichnis
{
    QString kartei;                   // its name
    std::vector<std::size_t> dateien; // entries, the card file among them
    qint64 bytes = 0;
    QStringList uebrig;
};

bool FuehrtHinaus(const QString &name)
{
    const bool laufwerk = name.size() > 1 && name.at(1) == u':';
    return name.startsWith(u'/') || laufwerk || name.contains(u'\\') || name.split(u'/').contains(u".."_s);
}

Inhaltsverzeichnis Durchsehen(const ZipReader &zip, const QString &paket)
{
    Inhaltsverzeichnis verzeichnis;
    const auto &eintraege = zip.Entries();
    for (std::size_t i = 0; i < eintraege.size(); ++i) {
        const ZipReader::Entry &eintrag = eintraege[i];
        if (FuehrtHinaus(eintrag.name))
            throw StoreError(
                Fehler::NichtErlaubt,
                u"Das Paket „%1“ enthält mit „%2“ einen Pfad, der aus seinem Ordner hinausführt. Es "
                u"wurde nichts ausgepackt."_s.arg(paket, eintrag.name));
        const bool ordner = eintrag.name.endsWith(u'/');
        if (!ordner && !eintrag.regular)
            throw StoreError(
                Fehler::NichtErlaubt,
                u"Das Paket „%1“ enthält mit „%2“ etwas, das keine gewöhnliche Datei ist. Es wurde "
                u"nichts ausgepackt."_s.arg(paket, eintrag.name));
        const bool kartei = IstKarteiname(eintrag.name);
        if (kartei && !verzeichnis.kartei.isEmpty())
            throw StoreError(
                Fehler::NichtErlaubt,
                u"Das Paket „%1“ enthält mehr als eine Kartei. Es wurde nichts ausgepackt."_s.arg(paket));
        if (kartei)
            verzeichnis.kartei = eintrag.name;
        if (kartei || (!ordner && IstMedienname(eintrag.name))) {
            verzeichnis.dateien.push_back(i);
            verzeichnis.bytes += eintrag.unpacked;
        } else if (!ordner) {
            verzeichnis.uebrig << eintrag.name;
        }
    }
    if (verzeichnis.kartei.isEmpty())
        throw StoreError(
            Fehler::FormatUnbekannt,
            u"Das Paket „%1“ enthält keine Kartei (.pzb). Es wurde nichts ausgepackt."_s.arg(paket));
    return verzeichnis;
}

// The directory that a package is unpacked into, the `nummer`th try.
QString Ordner(const QString &paket, int nummer)
{
    const QFileInfo info(paket);
    const QString name = info.fileName().chopped(Paketendung.size());
    const QString ordner = name.isEmpty() || name.startsWith(u'.') ? u"Kartei"_s : name;
    return info.absoluteDir().filePath(nummer < 2 ? ordner : u"%1-%2"_s.arg(ordner).arg(nummer));
}

void PlatzPruefen(const QString &ordner, qint64 bytes)
{
    const qint64 frei = FreeBytes(ordner);
    const QLocale deutsch(QLocale::German);
    if (frei >= 0 && frei < bytes)
        throw StoreError(Fehler::DatentraegerVoll,
                         u"Zum Auspacken fehlt Platz: Es sind %1 nötig und %2 frei."_s.arg(
                             deutsch.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat),
                             deutsch.formattedDataSize(frei, 1, QLocale::DataSizeTraditionalFormat)));
}

void Entpacken(const ZipReader &zip, const Inhaltsverzeichnis &verzeichnis, const QDir &ordner,
               const Progress &progress)
{
    constexpr qint64 Schritt = 1 << 20; // bytes between two tellings, and in one of its units
    qint64 erledigt = 0;
    qint64 gemeldet = -Schritt;
    for (const std::size_t i : verzeichnis.dateien) {
        const QString pfad = ordner.filePath(zip.Entries()[i].name);
        const FileHandle datei = OpenFile(pfad, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        zip.Unpack(i, [&](Bytes stueck) {
            WriteAll(datei, stueck, pfad);
            erledigt += static_cast<qint64>(stueck.size());
            if (!progress || erledigt - gemeldet < Schritt)
                return;
            gemeldet = erledigt;
            progress(static_cast<int>(erledigt / Schritt), static_cast<int>(verzeichnis.bytes / Schritt) + 1);
        });
        Sync(datei, pfad);
    }
    SyncDirectory(ordner.path());
}

} // namespace

QString SchonAusgepackt(const QString &paket)
{
    const QDir ordner(Ordner(paket, 1));
    if (!ordner.exists())
        return {};
    const QString kartei = ordner.filePath(Durchsehen(ZipReader(paket), paket).kartei);
    return QFileInfo(kartei).isFile() ? kartei : QString();
}

Ausgepackt Auspacken(const QString &paket, const Progress &progress)
{
    const ZipReader zip(paket);
    const Inhaltsverzeichnis verzeichnis = Durchsehen(zip, paket);
    const QString hier = QFileInfo(paket).absolutePath();
    ClearFreshFiles(hier);
    const DirectoryLock lock(hier);
    PlatzPruefen(hier, verzeichnis.bytes);
    const QByteArray marke =
        QCryptographicHash::hash(QFile::encodeName(QFileInfo(paket).fileName()), QCryptographicHash::Md5)
            .toHex();
    QDir daneben(QDir(hier).filePath(u".paukfix-%1.neu"_s.arg(QLatin1String(marke))));
    daneben.removeRecursively();
    const auto aufraeumen = qScopeGuard([&] { daneben.removeRecursively(); });
    QString ordner;
    int nummer = 0;
    do
        ordner = Ordner(paket, ++nummer);
    while (IsNameTaken(ordner));
    WithPlaceNamed(daneben.path(), ordner, [&] {
        if (mkdir(QFile::encodeName(daneben.path()).constData(), 0777) != 0)
            ThrowFileError(errno, ordner);
        Entpacken(zip, verzeichnis, daneben, progress);
        RenameFresh(daneben.path(), ordner);
        SyncDirectory(hier);
    });
    QString bericht;
    if (!verzeichnis.uebrig.isEmpty())
        bericht = u"Nicht ausgepackt, weil es kein Bild und kein Klang einer Kartei ist:\n\n"_s +
                  verzeichnis.uebrig.join(u'\n');
    return {QDir(ordner).filePath(verzeichnis.kartei), bericht};
}

} // namespace paukfix
