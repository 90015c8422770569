// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Stromausfall.h"

#include <algorithm>

namespace paukfix {

namespace {

constexpr qint64 Sektor = 512; // bytes; what a disk writes whole or not at all
constexpr int Zufaelle = 4;    // random disks per moment

} // namespace

void Stromausfall::Gemeldet()
{
    ++gemeldet_;
    Aufnehmen();
}

void Stromausfall::Geoeffnet(const QString &pfad, bool neu, const QByteArray &inhalt)
{
    Datei &datei = dateien_[pfad];
    if (datei.da)
        return;
    if (neu)
        datei = {.da = true};
    else
        datei = {.da = true, .eintrag = true, .fest = inhalt};
}

void Stromausfall::Geschrieben(const QString &pfad, qint64 stelle, const QByteArray &bytes)
{
    // Sector by sector, as each may be lost on its own.
    for (qint64 von = 0; von < bytes.size();) {
        const qint64 bis = std::min<qint64>(bytes.size(), ((stelle + von) / Sektor + 1) * Sektor - stelle);
        dateien_[pfad].offen.append({.stelle = stelle + von, .bytes = bytes.mid(von, bis - von)});
        von = bis;
    }
}

void Stromausfall::Gekuerzt(const QString &pfad, qint64 laenge)
{
    dateien_[pfad].offen.append({.stelle = laenge, .kuerzen = true});
}

void Stromausfall::Gesichert(const QString &pfad)
{
    Aufnehmen();
    Datei &datei = dateien_[pfad];
    for (const Aenderung &aenderung : datei.offen)
        Anwenden(datei.fest, aenderung);
    datei.offen.clear();
    datei.eintrag = true; // the engine syncs the directory with a new file's first sync
    Aufnehmen();
}

void Stromausfall::Geloescht(const QString &pfad, bool sicher)
{
    Aufnehmen();
    Datei &datei = dateien_[pfad];
    datei.da = false;
    datei.geloeschtOffen = !sicher && datei.eintrag;
    datei.eintrag = false;
    Aufnehmen();
}

void Stromausfall::Anwenden(QByteArray &inhalt, const Aenderung &aenderung)
{
    if (aenderung.kuerzen) {
        inhalt.resize(aenderung.stelle);
        return;
    }
    const qint64 ende = aenderung.stelle + aenderung.bytes.size();
    if (inhalt.size() < ende)
        inhalt.append(ende - inhalt.size(), '\0');
    std::ranges::copy(aenderung.bytes, inhalt.begin() + aenderung.stelle);
}

QByteArray Stromausfall::Inhalt(const Datei &datei, Rest rest)
{
    QByteArray inhalt = datei.fest;
    if (rest == Rest::Nichts)
        return inhalt;
    for (const Aenderung &aenderung : datei.offen)
        if (rest == Rest::Alles || zufall_() % 2 == 0)
            Anwenden(inhalt, aenderung);
    return inhalt;
}

void Stromausfall::Aufnehmen()
{
    for (int nummer = 0; nummer < 2 + Zufaelle; ++nummer) {
        const Rest rest = nummer == 0 ? Rest::Nichts : nummer == 1 ? Rest::Alles : Rest::Zufall;
        Bild bild{.gemeldet = gemeldet_};
        for (const auto &[pfad, datei] : dateien_) {
            const bool vielleicht = rest == Rest::Alles || (rest == Rest::Zufall && zufall_() % 2 == 0);
            // A new entry may be missing, a deleted one may still be there.
            const bool da = datei.da ? datei.eintrag || vielleicht : datei.geloeschtOffen && !vielleicht;
            if (da)
                bild.dateien[pfad] = Inhalt(datei, rest);
        }
        bilder.append(bild);
    }
}

} // namespace paukfix
