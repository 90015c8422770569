// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenabdruck.h"
#include "Tagesstand.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace SQLite {
class Database;
}

namespace paukfix {

// An open card file, as the history sees it. Within one session, which its beginning tells from all others,
// a box stays itself whatever happens to its cards, and wherever it goes on.
struct Verlaufsbox
{
    QString pfad;
    QDateTime sitzung;
    Kartenabdruck abdruck;
};

// What is to be written of one session.
struct Verlaufseintrag
{
    Verlaufsbox box;
    Tagesaenderungen tage;
};

// What the history knows of a box.
struct Verlaufsstand
{
    std::vector<Tagesstand> tage; // by day; dates to come, which a wrong clock has left, are among them
    QString frueher;              // where a box lay that this one may have been; empty where there is none
    bool frueherHier = false;     // that is this very place
    QString beiseite;             // a damaged file was given this name, and nobody was told; mostly empty
};

// The file of all boxes' days: an SQLite file in the user's directory, opened for each piece of work and
// closed again, so that several programs can share it. A file that cannot be read as what it is (damaged, of
// another kind) is given another name, and a new one, which tells of it, is begun. Nothing
// here is for two threads at once. All functions throw StoreError: 3045 another program holds the file for
// too long, 3343 a newer version has made it, 3051, 57, 61, ... as the disk says.
class VerlaufDatei
{
public:
    explicit VerlaufDatei(const QString &pfad);

    // All or nothing, durably. A box that was not known is known from then on.
    void Eintragen(const Verlaufseintrag &eintrag);
    Verlaufsstand Lesen(const Verlaufsbox &box);
    // Whether `box` is the one that it may have been: its days become those of `box`. Not asked again.
    void Beantworten(const Verlaufsbox &box, bool dieselbe);
    // The user was told of Verlaufsstand::beiseite.
    void BeiseiteGesagt();

private:
    using Arbeit = std::function<void(SQLite::Database &)>;

    enum class Zugriff
    {
        Lesen,
        Schreiben
    };

    void Mit(Zugriff zugriff, const Arbeit &arbeit);
    void Versuchen(Zugriff zugriff, const Arbeit &arbeit);
    void Pruefen(SQLite::Database &datei);
    void BeiseiteLegen();
    std::optional<std::int64_t> Finden(SQLite::Database &datei, const Verlaufsbox &box);
    std::int64_t FindenOderAnlegen(SQLite::Database &datei, const Verlaufsbox &box);

    // The box of the session that was written last.
    struct Erkannt
    {
        QDateTime sitzung;
        std::int64_t nummer = 0;
    };

    QString pfad_;
    bool geprueft_ = false;
    std::optional<Erkannt> erkannt_;
};

} // namespace paukfix
