// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Beilagen.h"

#include "CardFile.h"
#include "CardMedia.h"
#include "FileHandle.h"
#include "Mediendatei.h"
#include "StoreError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <utility>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Names a card file in its first line and in each further one a file: its sum, and its name.
const QString Merkzettel = u".paukfix-beilagen"_s;
constexpr qint64 LaengsterZettel = 64 << 20; // bytes
constexpr qsizetype SummenZeichen = 64;

void Lesen(const QString &pfad, const Takt &takt, const std::function<void(Bytes)> &nehmen)
{
    const FileHandle datei = OpenRegular(pfad, O_NOFOLLOW);
    std::vector<std::uint8_t> puffer(1 << 20);
    for (;;) {
        const ssize_t anzahl = read(datei.Get(), puffer.data(), puffer.size());
        if (anzahl == 0)
            return;
        if (anzahl > 0)
            nehmen(Bytes(puffer).first(static_cast<std::size_t>(anzahl)));
        else if (errno != EINTR)
            ThrowFileError(errno, pfad);
        if (takt)
            takt();
    }
}

// The names as a directory is looked through for them.
QSet<QString> Gefaltet(const QSet<QString> &genannt)
{
    QSet<QString> namen;
    for (const QString &name : genannt)
        namen.insert(BlosserName(name).toCaseFolded());
    return namen;
}

struct Zettel
{
    QString kartei;
    QList<std::pair<QString, QByteArray>> dateien; // name and sum
};

// A directory of somebody else may hold any such file.
Zettel ZettelLesen(const QString &pfad)
{
    QList<QByteArray> zeilen = ReadFile(pfad, LaengsterZettel).split('\n');
    zeilen.removeLast(); // behind the last line's end, or a line that was not written whole
    Zettel zettel;
    if (zeilen.isEmpty())
        return zettel;
    zettel.kartei = QString::fromUtf8(zeilen.takeFirst());
    for (const QByteArray &zeile : zeilen) {
        const QString name = QString::fromUtf8(zeile.mid(SummenZeichen + 1));
        if (IstMedienname(name))
            zettel.dateien.append({name, QByteArray::fromHex(zeile.left(SummenZeichen))});
    }
    return zettel;
}

// What the cards of the noted card file name. Of one that cannot be read nobody knows: then it is all that
// was put there. Throws StoreError 3045 where a program has it open.
QSet<QString> Genannt(const QString &verzeichnis, const Zettel &zettel)
{
    QSet<QString> genannt;
    const QString pfad = QDir(verzeichnis).filePath(zettel.kartei);
    if (zettel.kartei.isEmpty() || BlosserName(zettel.kartei) != zettel.kartei || !QFileInfo::exists(pfad))
        return genannt;
    try {
        EndUnfinishedChange(pfad);
        CardFile kartei(pfad, CardFile::Access::ReadOnly);
        for (const MediaName &medium : MediaNames(kartei.Database()))
            genannt.insert(medium.name);
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::Gesperrt)
            throw;
        for (const auto &datei : zettel.dateien)
            genannt.insert(datei.first);
    }
    return genannt;
}

void Wegnehmen(const QString &verzeichnis, const Zettel &zettel, const QSet<QString> &genannt)
{
    const QSet<QString> bleiben = Gefaltet(genannt);
    const QDir ort(verzeichnis);
    for (const auto &[name, summe] : zettel.dateien) {
        try {
            // Somebody may have put another one there meanwhile.
            if (!bleiben.contains(name.toCaseFolded()) && InhaltVon(ort.filePath(name)).summe == summe)
                QFile::remove(ort.filePath(name));
        } catch (const StoreError &) {
            continue; // it is not there
        }
    }
    QFile::remove(ort.filePath(Merkzettel));
    SyncDirectory(verzeichnis);
}

} // namespace

Dateiinhalt InhaltVon(const QString &pfad, const Takt &takt)
{
    QCryptographicHash summe(QCryptographicHash::Sha256);
    Dateiinhalt inhalt{.groesse = 0, .summe = {}};
    Lesen(pfad, takt, [&](Bytes bytes) {
        summe.addData(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
        inhalt.groesse += static_cast<qint64>(bytes.size());
    });
    inhalt.summe = summe.result();
    return inhalt;
}

Beilagen::Beilagen(const DirectoryLock &ort, QString kartei, Takt takt)
    : ort_(ort), kartei_(std::move(kartei)), takt_(std::move(takt))
{
    BeilagenAufraeumen(ort_.Directory());
    if (IsNameTaken(Pfad(Merkzettel)))
        throw StoreError(
            Fehler::Gesperrt,
            u"In diesem Ordner ist ein Kopieren von Bildern und Tönen nicht zu Ende gekommen. "
            u"Bitte beenden Sie das Programm, das eine Kartei daraus benutzt: %1"_s.arg(ort_.Directory()));
    QDirIterator namen(ort_.Directory(),
                       QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (namen.hasNext()) {
        namen.next();
        vorhanden_.insert(namen.fileName().toCaseFolded());
    }
}

Beilagen::~Beilagen()
{
    for (const Neue &neue : std::as_const(neue_))
        QFile::remove(neue.daneben);
    if (hingelegt_)
        BeilagenAufraeumen(ort_.Directory());
}

QString Beilagen::Pfad(const QString &name) const
{
    return QDir(ort_.Directory()).filePath(name);
}

QString Beilagen::Platz(const QString &name, const Dateiinhalt &inhalt, bool &da) const
{
    for (int nummer = 1;; ++nummer) {
        QString kandidat = NummerierterName(name, nummer);
        const QString gefaltet = kandidat.toCaseFolded();
        if (const auto neue = neue_.constFind(gefaltet); neue != neue_.cend()) {
            if (neue->inhalt != inhalt)
                continue;
            da = true;
            return neue->name;
        }
        da = vorhanden_.contains(gefaltet);
        if (!da)
            return kandidat;
        const QString dort = Mediendatei(ort_.Directory(), kandidat);
        try {
            if (QFileInfo(dort).size() == inhalt.groesse && InhaltVon(dort, takt_) == inhalt)
                return QFileInfo(dort).fileName();
        } catch (const StoreError &fehler) {
            if (fehler.Number() == Fehler::Abgebrochen)
                throw;
            continue; // no file that can be read: another one in any case
        }
    }
}

// ClearFreshFiles knows such names.
QString Beilagen::NaechsterDaneben() const
{
    return Pfad(u".paukfix-beilage-%1.neu"_s.arg(neue_.size()));
}

QString Beilagen::Aufnehmen(const QString &name, const QString &daneben, const Dateiinhalt &inhalt)
{
    neue_.insert(name.toCaseFolded(), {name, daneben, inhalt});
    return name;
}

QString Beilagen::Kopieren(const QString &name, const QString &pfad, const Dateiinhalt &inhalt)
{
    bool da = false;
    QString platz = Platz(name, inhalt, da);
    if (da)
        return platz;
    const QString daneben = NaechsterDaneben();
    QFile::remove(daneben);
    QCryptographicHash summe(QCryptographicHash::Sha256);
    try {
        WithPlaceNamed(daneben, Pfad(platz), [&] {
            const FileHandle kopie = OpenFile(daneben, O_WRONLY | O_CREAT | O_EXCL);
            Lesen(pfad, takt_, [&](Bytes bytes) {
                summe.addData(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
                WriteAll(kopie, bytes, daneben);
            });
            Sync(kopie, daneben);
        });
        if (summe.result() != inhalt.summe)
            throw StoreError(Fehler::GeraeteFehler,
                             u"Die Datei wurde beim Kopieren geändert: %1"_s.arg(pfad));
    } catch (...) {
        QFile::remove(daneben);
        throw;
    }
    return Aufnehmen(platz, daneben, inhalt);
}

QString Beilagen::Machen(const QString &name, const std::function<void(const QString &pfad)> &machen)
{
    const QString daneben = NaechsterDaneben();
    QFile::remove(daneben);
    try {
        Dateiinhalt inhalt;
        WithPlaceNamed(daneben, Pfad(name), [&] {
            machen(daneben);
            SyncFile(daneben);
            inhalt = InhaltVon(daneben, takt_);
        });
        bool da = false;
        QString platz = Platz(name, inhalt, da);
        if (!da)
            return Aufnehmen(platz, daneben, inhalt);
        QFile::remove(daneben);
        return platz;
    } catch (...) {
        QFile::remove(daneben);
        throw;
    }
}

void Beilagen::Hinlegen()
{
    if (neue_.isEmpty())
        return;
    QByteArray zettel = kartei_.toUtf8() + '\n';
    for (const Neue &neue : std::as_const(neue_))
        zettel += neue.inhalt.summe.toHex() + ' ' + neue.name.toUtf8() + '\n';
    const QString pfad = Pfad(Merkzettel);
    try {
        WithPlaceNamed(pfad, ort_.Directory(), [&] { WriteFileSynced(pfad, zettel); });
    } catch (...) {
        QFile::remove(pfad);
        throw;
    }
    hingelegt_ = true;
    SyncDirectory(ort_.Directory());
    for (const Neue &neue : std::as_const(neue_))
        RenameFresh(neue.daneben, Pfad(neue.name));
    SyncDirectory(ort_.Directory());
}

void Beilagen::Abschliessen(const QSet<QString> &genannt)
{
    if (!std::exchange(hingelegt_, false))
        return;
    Wegnehmen(ort_.Directory(), ZettelLesen(Pfad(Merkzettel)), genannt);
}

void BeilagenAufraeumen(const QString &verzeichnis) noexcept
{
    const QString pfad = QDir(verzeichnis).filePath(Merkzettel);
    if (!IsNameTaken(pfad))
        return;
    try {
        const Zettel zettel = ZettelLesen(pfad);
        Wegnehmen(verzeichnis, zettel, Genannt(verzeichnis, zettel));
    } catch (const std::exception &) {
        return; // the next opening tries again
    }
}

} // namespace paukfix
