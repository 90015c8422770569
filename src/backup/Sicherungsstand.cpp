// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungsstand.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "StoreError.h"

#include <QFile>
#include <QStringList>
#include <QUrl>
#include <SQLiteCpp/Statement.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

Kartenstand Zaehlen(SQLite::Database &kartei)
{
    Kartenstand stand;
    // Null and numbers of no compartment stand in damaged files alone.
    SQLite::Statement zeilen(kartei, "SELECT CAST(FachNr AS INTEGER), count(*) FROM Lernkarten GROUP BY 1");
    while (zeilen.executeStep()) {
        const int fach = zeilen.getColumn(0).getInt();
        const int karten = zeilen.getColumn(1).getInt();
        if (fach >= 0 && fach < FachAnzahl)
            stand.faecher[static_cast<std::size_t>(fach)] = karten;
        stand.karten += karten;
    }
    return stand;
}

// The address of a file that is read as it stands, without a lock, as the program itself may hold it.
std::string OhneSperre(const QString &datei)
{
    QUrl adresse = QUrl::fromLocalFile(datei);
    adresse.setQuery(u"immutable=1"_s);
    return adresse.toEncoded().toStdString();
}

int Anzahl(SQLite::Database &karteien, const std::string &bedingung)
{
    return karteien.execAndGet("SELECT count(*) FROM " + bedingung).getInt();
}

} // namespace

Kartenstand KarteiZaehlen(const QString &datei)
{
    CardFile kartei(datei, CardFile::Access::ReadOnly);
    try {
        return Zaehlen(kartei.Database());
    } catch (const SQLite::Exception &fehler) {
        ThrowStoreError(fehler, datei);
    }
}

Kartenstand KarteiPruefen(const QString &datei)
{
    CardFile kartei(datei, CardFile::Access::ReadOnly);
    try {
        CheckCardFile(kartei.Database());
        return Zaehlen(kartei.Database());
    } catch (const SQLite::Exception &fehler) {
        ThrowStoreError(fehler, datei);
    }
}

Kartenunterschied Vergleichen(const QString &frueher, const QString &jetzt)
{
    try {
        SQLite::Database karteien(OhneSperre(frueher), SQLite::OPEN_READONLY | SQLite::OPEN_URI);
        Distrust(karteien);
        SQLite::Statement anhaengen(karteien, "ATTACH ? AS jetzt");
        anhaengen.bind(1, OhneSperre(jetzt));
        anhaengen.exec();

        std::string andere; // "OR alt.x IS NOT neu.x" for each column that says what is on a card
        SQLite::Statement spalten(karteien, "SELECT name FROM pragma_table_info('Lernkarten')");
        while (spalten.executeStep()) {
            const std::string name = spalten.getColumn(0).getString();
            if (name != "FrageNr" && name != "FachNr" && name != "FachLfdNr")
                andere.append(" OR alt.\"").append(name).append("\" IS NOT neu.\"").append(name).append("\"");
        }
        const std::string beide = "main.Lernkarten alt JOIN jetzt.Lernkarten neu USING (FrageNr) WHERE ";
        return {
            Anzahl(karteien, "jetzt.Lernkarten WHERE FrageNr NOT IN (SELECT FrageNr FROM main.Lernkarten)"),
            Anzahl(karteien, "main.Lernkarten WHERE FrageNr NOT IN (SELECT FrageNr FROM jetzt.Lernkarten)"),
            Anzahl(karteien, beide + "0" + andere), Anzahl(karteien, beide + "alt.FachNr IS NOT neu.FachNr"),
            Anzahl(karteien, beide + "alt.FachNr IS neu.FachNr AND alt.FachLfdNr IS NOT neu.FachLfdNr")};
    } catch (const SQLite::Exception &fehler) {
        ThrowStoreError(fehler, frueher);
    }
}

} // namespace paukfix
