// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VollePlatte.h"

#include <sqlite3.h>

#include <map>

namespace {

VollePlatte::Zustand stand = VollePlatte::Zustand::Gesund;
sqlite3_vfs echtesSystem;
sqlite3_vfs system;

// The engine has different methods for different kinds of files; each kind gets a copy with ours in it.
struct Methoden : sqlite3_io_methods
{
    const sqlite3_io_methods *echt;
};

std::map<const sqlite3_io_methods *, Methoden> methoden;

const sqlite3_io_methods &Echt(const sqlite3_file *datei)
{
    return *static_cast<const Methoden *>(datei->pMethods)->echt;
}

int Schreiben(sqlite3_file *datei, const void *daten, int laenge, sqlite3_int64 platz)
{
    if (stand == VollePlatte::Zustand::Voll)
        return SQLITE_FULL;
    if (stand == VollePlatte::Zustand::Kaputt)
        return SQLITE_IOERR_WRITE;
    return Echt(datei).xWrite(datei, daten, laenge, platz);
}

int Lesen(sqlite3_file *datei, void *daten, int laenge, sqlite3_int64 platz)
{
    if (stand == VollePlatte::Zustand::Kaputt)
        return SQLITE_IOERR_READ;
    return Echt(datei).xRead(datei, daten, laenge, platz);
}

int Oeffnen(sqlite3_vfs *, const char *name, sqlite3_file *datei, int flags, int *wirklich)
{
    const int ergebnis = echtesSystem.xOpen(&echtesSystem, name, datei, flags, wirklich);
    if (ergebnis == SQLITE_OK && datei->pMethods) {
        const auto [ort, neu] = methoden.try_emplace(datei->pMethods);
        if (neu) {
            static_cast<sqlite3_io_methods &>(ort->second) = *datei->pMethods;
            ort->second.echt = datei->pMethods;
            ort->second.xWrite = Schreiben;
            ort->second.xRead = Lesen;
        }
        datei->pMethods = &ort->second;
    }
    return ergebnis;
}

} // namespace

void VollePlatte::Einbauen()
{
    static bool eingebaut = false;
    if (eingebaut)
        return;
    eingebaut = true;
    echtesSystem = *sqlite3_vfs_find(nullptr);
    system = echtesSystem;
    system.zName = "testplatte";
    system.xOpen = Oeffnen;
    sqlite3_vfs_register(&system, 1);
}

void VollePlatte::Setzen(Zustand zustand)
{
    stand = zustand;
}
