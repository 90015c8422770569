// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>
#include <sqlite3.h>

#include <array>
#include <optional>
#include <utility>

namespace paukfix {

// A disk that can be full or broken, fail once, or be watched: every file that the database engine opens from
// Einbauen() on stands on it. It syncs nothing, so that tests are fast.
namespace VollePlatte {

enum class Zustand
{
    Gesund,
    Voll,   // nothing more can be written
    Kaputt, // nothing can be read or written
};

// Once, before the first card file is opened.
void Einbauen();
// All files, or those whose path begins with `nur`: another disk.
void Setzen(Zustand zustand, const QString &nur = {});

// The engine's calls to the disk that can fail.
enum class Vorgang
{
    Oeffnen,
    Lesen,
    Schreiben,
    Kuerzen,
    Sichern,
    Loeschen,
    Groesse,
    Nachsehen, // whether a file is there
    Sperren,
};

// How a call fails.
enum class Art
{
    Fehler, // an I/O error, nothing has happened
    Halb,   // an I/O error, half of it has happened: half the bytes are written, the file is deleted
    Voll,   // the disk is full (writing, syncing), else as Fehler
};

// All of them, by what they mean: rows for a test.
inline constexpr std::array<std::pair<const char *, Art>, 3> AlleArten{
    {{"nothing has happened", Art::Fehler},
     {"half of it has happened", Art::Halb},
     {"the disk is full", Art::Voll}}};

// Lets the call number `nummer` from now on, counted from 1, fail once; 0 for none. From then on the disk is
// as `danach` says.
void Scheitern(int nummer, Art art = Art::Fehler, Zustand danach = Zustand::Gesund);
// The call that has failed since then.
std::optional<Vorgang> Gescheitert();

// Sees everything that changes files. Gesichert comes before what was written counts as safe.
class Zeuge
{
public:
    Zeuge() = default;
    Zeuge(const Zeuge &) = delete;
    Zeuge &operator=(const Zeuge &) = delete;
    virtual ~Zeuge() = default;
    virtual void Geoeffnet(const QString &pfad, bool neu, const QByteArray &inhalt) = 0;
    virtual void Geschrieben(const QString &pfad, qint64 stelle, const QByteArray &bytes) = 0;
    virtual void Gekuerzt(const QString &pfad, qint64 laenge) = 0;
    virtual void Gesichert(const QString &pfad) = 0;
    // `sicher`: the deletion itself has been synced.
    virtual void Geloescht(const QString &pfad, bool sicher) = 0;
};

void SetZeuge(Zeuge *zeuge);

} // namespace VollePlatte

} // namespace paukfix
