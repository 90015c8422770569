// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SafeFile.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <functional>

namespace paukfix {

// What a file holds, as far as it takes to know it again.
struct Dateiinhalt
{
    qint64 groesse = -1; // bytes
    QByteArray summe;    // SHA-256

    bool operator==(const Dateiinhalt &) const = default;
};

// Called between two pieces of a long file; what it throws ends the reading.
using Takt = std::function<void()>;

// Reads the regular file at `pfad`; a link is not followed. Throws StoreError as ThrowFileError tells.
Dateiinhalt InhaltVon(const QString &pfad, const Takt &takt = {});

// Pictures and sounds on their way to lie beside a card file: all of them or none, and never over what lies
// there. They are made under names of their own, get theirs by Hinlegen just before the cards that name them
// are stored, and stay where these are stored then. Whatever ends the work before, a kill too, leaves the
// directory as it was: what lies there then is put right by the next object of this class, or by
// ClearFreshFiles when a card file of the directory is opened. All throw StoreError.
class Beilagen
{
public:
    // `ort` must outlive it, and nobody else makes Beilagen there meanwhile. `kartei` is the name of the card
    // file of that directory whose cards name them.
    Beilagen(const DirectoryLock &ort, QString kartei, Takt takt = {});
    Beilagen(const Beilagen &) = delete;
    Beilagen &operator=(const Beilagen &) = delete;
    // Without Abschliessen() it is asked of the card file, which must not be open in this program then,
    // whether its cards name what was put there.
    ~Beilagen();

    // Takes the file `pfad`, which holds `inhalt`, for cards that call it `name`. Returns the name that they
    // must call it: another one where a file of that name, or one that differs only in case, is another one.
    // Nothing is copied where it is there already.
    QString Kopieren(const QString &name, const QString &pfad, const Dateiinhalt &inhalt);
    // The same for what `machen` writes at the path that it is given.
    QString Machen(const QString &name, const std::function<void(const QString &pfad)> &machen);

    // How many are new in the directory.
    qsizetype Anzahl() const { return neue_.size(); }

    // Puts all of them at their places, durably. To be called once.
    void Hinlegen();
    // Lets those stay that are named in `genannt` (stored names of cards), and takes the others away.
    void Abschliessen(const QSet<QString> &genannt);

private:
    struct Neue
    {
        QString name, daneben; // its place, and the path where it lies until Hinlegen
        Dateiinhalt inhalt;
    };

    QString Pfad(const QString &name) const;
    // The name that fits `inhalt`; `da` tells whether it is there or was taken before.
    QString Platz(const QString &name, const Dateiinhalt &inhalt, bool &da) const;
    QString NaechsterDaneben() const;
    QString Aufnehmen(const QString &name, const QString &daneben, const Dateiinhalt &inhalt);

    const DirectoryLock &ort_;
    QString kartei_;
    Takt takt_;
    QSet<QString> vorhanden_;   // names of the directory, case folded
    QHash<QString, Neue> neue_; // by their names, case folded
    bool hingelegt_ = false;
};

// Takes away what a killed program had put into the directory for cards that were not stored. The directory
// is locked by the caller. Where the card file is in use now, all stays for the next time.
void BeilagenAufraeumen(const QString &verzeichnis) noexcept;

} // namespace paukfix
