// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Beilagen.h"
#include "CardSource.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <optional>

namespace paukfix {

// The file that a card calls so, or what is in its way.
struct Fundstelle
{
    QString pfad;
    QString hindernis; // German, the end of a sentence that begins with the name; empty where it can be read
};

// Looks for what a card calls `name`, as it is stored, in the directory `verzeichnis` and nowhere else.
Fundstelle MediumSuchen(const QString &verzeichnis, const QString &name);

// A line for a report: what is in the way of a file that so many cards name.
QString MedienZeile(const QString &name, const QString &hindernis, int karten);

// The files that cards of one directory name, on their way beside cards in another one. What cannot come
// along is kept for a report; only what keeps all of them from coming is thrown.
class Medienmitnahme
{
public:
    // Files are looked for in `von` alone.
    Medienmitnahme(QString von, Beilagen &nach, Takt takt = {});

    // The name by which `karten` cards must call the file that they call `name`, as it is stored. Throws
    // StoreError where it cannot be written.
    QString Mitnehmen(const QString &name, int karten = 1);

    // The stored names that have become others.
    const QHash<QString, QString> &Umbenannt() const { return umbenannt_; }

    // German, many lines: what did not come along, and why. Empty where all came.
    QString Bericht() const;

private:
    struct Gefunden
    {
        QString neu;
        QString hindernis; // why it does not come along; empty where it does
        int karten = 0;
    };

    Gefunden Suchen(const QString &name) const;

    QString von_;
    Beilagen &nach_;
    Takt takt_;
    QHash<QString, Gefunden> namen_; // by stored names
    QStringList reihenfolge_;
    QHash<QString, QString> umbenannt_;
};

// Cards on their way to another directory, whose names of pictures and sounds follow the files. What ends the
// taking along ends the cards too, and is told by Hindernis().
class MitMedien final : public CardSource
{
public:
    MitMedien(CardSource &karten, Medienmitnahme &medien) : karten_(karten), medien_(medien) {}

    int Count() const override { return karten_.Count(); }

    bool Next() override { return !hindernis_ && karten_.Next(); }

    const std::vector<int> &Columns() const override { return karten_.Columns(); }

    void Read(int column, CopiedValue &value) override;

    CardPlace Place() const override { return karten_.Place(); }

    void Taken() override { karten_.Taken(); }

    std::optional<StoreError> DamageFound(int taken) const override { return karten_.DamageFound(taken); }

    QString Remark() const override { return karten_.Remark(); }

    const std::optional<StoreError> &Hindernis() const { return hindernis_; }

private:
    CardSource &karten_;
    Medienmitnahme &medien_;
    std::optional<StoreError> hindernis_;
};

} // namespace paukfix
