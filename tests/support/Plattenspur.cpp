// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Plattenspur.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <sys/stat.h>

namespace paukfix {

using What = DiskCalls::Change::What;

namespace {

constexpr qint64 Sektor = 512; // bytes; what a disk writes whole or not at all
constexpr int Zufaelle = 2;    // random disks per moment

ino_t Nummer(const QString &pfad)
{
    struct stat info = {};
    if (lstat(QFile::encodeName(pfad).constData(), &info) != 0)
        qFatal("%s is not there", qPrintable(pfad));
    return info.st_ino;
}

} // namespace

Plattenspur::Plattenspur(const QString &ordner)
{
    QDirIterator alle(ordner, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (alle.hasNext()) {
        QFile datei(alle.next());
        if (!datei.open(QIODevice::ReadOnly))
            qFatal("%s cannot be read", qPrintable(datei.fileName()));
        const int nummer = static_cast<int>(dateien_.size());
        dateien_[nummer].fest = datei.readAll();
        nummern_[Nummer(datei.fileName())] = namen_[datei.fileName()] = nummer;
    }
    fest_ = namen_;
    aufrufe_.below = ordner;
    aufrufe_.waits = false;
    aufrufe_.before = [this](const DiskCalls::Change &aenderung) {
        if (aenderung.what == What::Sync || aenderung.what == What::Rename || aenderung.what == What::Remove)
            Aufnehmen();
        return 0;
    };
    aufrufe_.done = [this](const DiskCalls::Change &aenderung) { Geschehen(aenderung); };
}

void Plattenspur::Gemeldet()
{
    ++gemeldet_;
    Aufnehmen();
}

void Plattenspur::Geschehen(const DiskCalls::Change &aenderung)
{
    switch (aenderung.what) {
    case What::Make: {
        const int nummer = static_cast<int>(dateien_.size());
        dateien_[nummer] = {};
        nummern_[Nummer(aenderung.path)] = namen_[aenderung.path] = nummer;
        offen_.append({.weg = {}, .da = aenderung.path, .datei = nummer});
        break;
    }
    case What::Write:
    case What::Truncate:
        Schreiben(aenderung);
        break;
    case What::Sync:
        Sichern(aenderung);
        break;
    case What::Rename:
        namen_[aenderung.to] = namen_.at(aenderung.path);
        namen_.erase(aenderung.path);
        offen_.append({.weg = aenderung.path, .da = aenderung.to, .datei = namen_.at(aenderung.to)});
        break;
    case What::Link:
        namen_[aenderung.to] = namen_.at(aenderung.path);
        offen_.append({.weg = {}, .da = aenderung.to, .datei = namen_.at(aenderung.to)});
        break;
    case What::Remove:
        namen_.erase(aenderung.path);
        offen_.append({.weg = aenderung.path, .da = {}});
        break;
    case What::MakeDirectory: // may bear the number of a file that is no more
        nummern_.erase(Nummer(aenderung.path));
        break;
    }
}

// Sector by sector, as each may be lost on its own.
void Plattenspur::Schreiben(const DiskCalls::Change &aenderung)
{
    Datei &datei = dateien_.at(nummern_.at(aenderung.file));
    if (aenderung.what == What::Truncate) {
        datei.offen.append({.stelle = aenderung.place, .kuerzen = true});
        return;
    }
    const QByteArray &bytes = aenderung.bytes;
    for (qint64 von = 0; von < bytes.size();) {
        const qint64 stelle = aenderung.place + von;
        const qint64 bis = std::min<qint64>(bytes.size(), von + Sektor - stelle % Sektor);
        datei.offen.append({.stelle = stelle, .bytes = bytes.mid(von, bis - von)});
        von = bis;
    }
}

void Plattenspur::Sichern(const DiskCalls::Change &aenderung)
{
    if (const auto nummer = nummern_.find(aenderung.file); nummer != nummern_.end()) {
        Datei &datei = dateien_.at(nummer->second);
        for (const Stueck &stueck : datei.offen)
            Anwenden(datei.fest, stueck);
        datei.offen.clear();
        return;
    }
    const auto darin = [&](const QString &name) {
        return !name.isEmpty() && QFileInfo(name).path() == aenderung.path;
    };
    for (qsizetype i = 0; i < offen_.size();) {
        if (!darin(offen_[i].weg) && !darin(offen_[i].da)) {
            ++i;
            continue;
        }
        fest_.erase(offen_[i].weg);
        if (!offen_[i].da.isEmpty())
            fest_[offen_[i].da] = offen_[i].datei;
        offen_.removeAt(i);
    }
}

void Plattenspur::Anwenden(QByteArray &inhalt, const Stueck &stueck)
{
    const qint64 ende = stueck.kuerzen ? stueck.stelle : stueck.stelle + stueck.bytes.size();
    if (stueck.kuerzen && inhalt.size() > ende)
        inhalt.resize(ende);
    if (inhalt.size() < ende)
        inhalt.append(ende - inhalt.size(), '\0');
    std::ranges::copy(stueck.bytes, inhalt.begin() + stueck.stelle);
}

bool Plattenspur::Kommt(Rest rest)
{
    return rest == Rest::Alles || (rest == Rest::Zufall && zufall_() % 2 == 0);
}

QByteArray Plattenspur::Inhalt(const Datei &datei, Rest rest)
{
    QByteArray inhalt = datei.fest;
    for (const Stueck &stueck : datei.offen)
        if (Kommt(rest))
            Anwenden(inhalt, stueck);
    return inhalt;
}

void Plattenspur::Aufnehmen()
{
    for (int mal = 0; mal < 2 + Zufaelle; ++mal) {
        const Rest rest = mal == 0 ? Rest::Nichts : mal == 1 ? Rest::Alles : Rest::Zufall;
        std::map<QString, int> namen = fest_;
        for (const Umbenennung &um : offen_) {
            if (!Kommt(rest))
                continue;
            namen.erase(um.weg);
            if (!um.da.isEmpty())
                namen[um.da] = um.datei;
        }
        Stromausfall::Bild bild{.gemeldet = gemeldet_};
        for (const auto &[name, nummer] : namen)
            bild.dateien[name] = Inhalt(dateien_.at(nummer), rest);
        bilder.append(bild);
    }
}

} // namespace paukfix
