// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Vorlage.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <map>
#include <optional>

namespace paukfix {

// One side of the cards that a note type makes; nothing where its template is broken.
struct Kartenvorlage
{
    QString name;
    std::optional<Vorlage> frage, antwort;
};

struct Notiztyp
{
    QString name;
    bool luecken = false; // one template for all gaps
    QStringList felder;
    std::map<qint64, Kartenvorlage> vorlagen; // by their numbers
};

// A row of the collection: a card and the note that it is of.
struct Sammlungszeile
{
    qint64 notiztyp = 0, vorlage = 0, stapel = 0, tage = 0, art = 0, lage = 0, wiederholungen = 0,
           markierung = 0;
    std::vector<QString> felder;
    QStringList schlagwoerter;
};

// The collection of a package: SQLite of schema 11, which keeps note types and decks as JSON, or 18, which
// has tables for them. It is somebody else's database: opened only to be read, with views, triggers and
// functions off, and what takes too long is given up. Everything throws StoreError.
class ApkgSammlung
{
public:
    // `groesse` in bytes tells how much work is reasonable.
    ApkgSammlung(const QString &pfad, qint64 groesse);
    ApkgSammlung(const ApkgSammlung &) = delete;
    ApkgSammlung &operator=(const ApkgSammlung &) = delete;

    int Karten() const { return karten_; }

    // Nothing where there is none of this number.
    const Notiztyp *Typ(qint64 nummer) const;

    QString Stapel(qint64 nummer) const { return stapel_.value(nummer); }

    // The names of all decks, in their order.
    QStringList Stapelnamen() const;

    // False behind the last card. Cards whose note is missing do not come.
    bool Naechste(Sammlungszeile &zeile);
    void VonVorn();

private:
    static int Muede(void *selbst);
    void Vorbereiten();
    void Lesen11();
    void Lesen18();
    void Zaehlen();

    SQLite::Database datenbank_;
    qint64 geduld_; // calls of Muede that are left
    std::map<qint64, Notiztyp> typen_;
    QHash<qint64, QString> stapel_;
    int karten_ = 0;
    std::optional<SQLite::Statement> zeilen_;
};

} // namespace paukfix
