// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VollePlatte.h"

#include <QFile>

#include <map>

namespace paukfix {

namespace {

using VollePlatte::Art;
using VollePlatte::Vorgang;
using VollePlatte::Zustand;

Zustand stand = Zustand::Gesund;
QString betroffen; // the beginning of the paths on the disk that `stand` tells of
VollePlatte::Zeuge *zeuge = nullptr;
int bisZumFehler = 0; // calls, the failing one included; 0 for none
Art art = Art::Fehler;
Zustand danachStand = Zustand::Gesund;
std::optional<Vorgang> gescheitert;
sqlite3_vfs echtesSystem;
sqlite3_vfs platte;

// The engine has different methods for different kinds of files; each kind gets a copy with ours in it.
struct Methoden : sqlite3_io_methods
{
    const sqlite3_io_methods *echt;
};

std::map<const sqlite3_io_methods *, Methoden> methoden;
std::map<const sqlite3_file *, QString> pfade;

const sqlite3_io_methods &Echt(const sqlite3_file *datei)
{
    return *static_cast<const Methoden *>(datei->pMethods)->echt;
}

bool Scheitert(Vorgang vorgang)
{
    if (bisZumFehler == 0 || --bisZumFehler > 0)
        return false;
    gescheitert = vorgang;
    if (danachStand != Zustand::Gesund)
        stand = danachStand;
    return true;
}

Zustand StandVon(const sqlite3_file *datei)
{
    const auto pfad = pfade.find(datei);
    const bool dort = betroffen.isEmpty() || (pfad != pfade.end() && pfad->second.startsWith(betroffen));
    return dort ? stand : Zustand::Gesund;
}

bool Schreibt(const sqlite3_file *datei)
{
    return zeuge && pfade.contains(datei);
}

int Schliessen(sqlite3_file *datei)
{
    const int ergebnis = Echt(datei).xClose(datei);
    pfade.erase(datei);
    return ergebnis;
}

int Lesen(sqlite3_file *datei, void *daten, int laenge, sqlite3_int64 stelle)
{
    if (StandVon(datei) == Zustand::Kaputt || Scheitert(Vorgang::Lesen))
        return SQLITE_IOERR_READ;
    return Echt(datei).xRead(datei, daten, laenge, stelle);
}

int Schreiben(sqlite3_file *datei, const void *daten, int laenge, sqlite3_int64 stelle)
{
    if (StandVon(datei) == Zustand::Voll)
        return SQLITE_FULL;
    if (StandVon(datei) == Zustand::Kaputt)
        return SQLITE_IOERR_WRITE;
    if (Scheitert(Vorgang::Schreiben)) {
        if (art == Art::Halb)
            Echt(datei).xWrite(datei, daten, laenge / 2, stelle);
        return art == Art::Voll ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    }
    if (Schreibt(datei))
        zeuge->Geschrieben(pfade[datei], stelle, {static_cast<const char *>(daten), laenge});
    return Echt(datei).xWrite(datei, daten, laenge, stelle);
}

int Kuerzen(sqlite3_file *datei, sqlite3_int64 laenge)
{
    if (Scheitert(Vorgang::Kuerzen))
        return SQLITE_IOERR_TRUNCATE;
    if (Schreibt(datei))
        zeuge->Gekuerzt(pfade[datei], laenge);
    return Echt(datei).xTruncate(datei, laenge);
}

int Sichern(sqlite3_file *datei, int)
{
    if (Scheitert(Vorgang::Sichern))
        return art == Art::Voll ? SQLITE_FULL : SQLITE_IOERR_FSYNC;
    if (Schreibt(datei))
        zeuge->Gesichert(pfade[datei]);
    return SQLITE_OK;
}

int Groesse(sqlite3_file *datei, sqlite3_int64 *groesse)
{
    if (Scheitert(Vorgang::Groesse))
        return SQLITE_IOERR_FSTAT;
    return Echt(datei).xFileSize(datei, groesse);
}

int Sperren(sqlite3_file *datei, int stufe)
{
    if (Scheitert(Vorgang::Sperren))
        return SQLITE_IOERR_LOCK;
    return Echt(datei).xLock(datei, stufe);
}

QByteArray Inhalt(sqlite3_file *datei)
{
    sqlite3_int64 groesse = 0;
    Echt(datei).xFileSize(datei, &groesse);
    QByteArray inhalt(groesse, '\0');
    Echt(datei).xRead(datei, inhalt.data(), static_cast<int>(groesse), 0);
    return inhalt;
}

int Oeffnen(sqlite3_vfs *, const char *name, sqlite3_file *datei, int flags, int *wirklich)
{
    if (Scheitert(Vorgang::Oeffnen)) {
        datei->pMethods = nullptr;
        return SQLITE_CANTOPEN;
    }
    const bool neu = name && !QFile::exists(QFile::decodeName(name));
    const int ergebnis = echtesSystem.xOpen(&echtesSystem, name, datei, flags, wirklich);
    if (ergebnis == SQLITE_OK && datei->pMethods) {
        const auto [ort, erste] = methoden.try_emplace(datei->pMethods);
        if (erste) {
            static_cast<sqlite3_io_methods &>(ort->second) = *datei->pMethods;
            ort->second.echt = datei->pMethods;
            ort->second.xClose = Schliessen;
            ort->second.xRead = Lesen;
            ort->second.xWrite = Schreiben;
            ort->second.xTruncate = Kuerzen;
            ort->second.xSync = Sichern;
            ort->second.xFileSize = Groesse;
            ort->second.xLock = Sperren;
        }
        datei->pMethods = &ort->second;
        if (name) {
            pfade[datei] = QFile::decodeName(name);
            if (zeuge)
                zeuge->Geoeffnet(pfade[datei], neu, neu ? QByteArray() : Inhalt(datei));
        }
    }
    return ergebnis;
}

int Loeschen(sqlite3_vfs *, const char *name, int sicher)
{
    if (Scheitert(Vorgang::Loeschen)) {
        if (art != Art::Halb)
            return SQLITE_IOERR_DELETE;
        echtesSystem.xDelete(&echtesSystem, name, 0);
        return SQLITE_IOERR_DIR_FSYNC;
    }
    const int ergebnis = echtesSystem.xDelete(&echtesSystem, name, 0);
    if (ergebnis == SQLITE_OK && zeuge)
        zeuge->Geloescht(QFile::decodeName(name), sicher != 0);
    return ergebnis;
}

int Nachsehen(sqlite3_vfs *, const char *name, int flags, int *antwort)
{
    if (Scheitert(Vorgang::Nachsehen))
        return SQLITE_IOERR_ACCESS;
    return echtesSystem.xAccess(&echtesSystem, name, flags, antwort);
}

} // namespace

void VollePlatte::Einbauen()
{
    static bool eingebaut = false;
    if (eingebaut)
        return;
    eingebaut = true;
    echtesSystem = *sqlite3_vfs_find(nullptr);
    platte = echtesSystem;
    platte.zName = "testplatte";
    platte.xOpen = Oeffnen;
    platte.xDelete = Loeschen;
    platte.xAccess = Nachsehen;
    sqlite3_vfs_register(&platte, 1);
}

void VollePlatte::Setzen(Zustand zustand, const QString &nur)
{
    stand = zustand;
    betroffen = nur;
}

void VollePlatte::Scheitern(int nummer, Art wie, Zustand danach)
{
    danachStand = danach;
    bisZumFehler = nummer;
    art = wie;
    gescheitert.reset();
}

std::optional<Vorgang> VollePlatte::Gescheitert()
{
    return gescheitert;
}

void VollePlatte::SetZeuge(Zeuge *neuer)
{
    zeuge = neuer;
}

} // namespace paukfix
