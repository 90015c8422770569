// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Sicherung.h"

namespace paukfix {

// Where the backups lie: a directory for all, in it one for each box, named after the box and where it lies.
// A box that lies beside that directory, or deeper there, is known by the way from it: both can move
// together. A backup is named after the box and its time: "Englisch 2026-11-22 18-02-33.pzb". What bears
// another name is none.
class Sicherungsordner
{
public:
    explicit Sicherungsordner(QString wurzel) : wurzel_(std::move(wurzel)) {}

    const QString &Wurzel() const { return wurzel_; }

    // The directory of the box at `kartei`, which need not exist yet. A link leads to the box itself.
    QString Von(const QString &kartei) const;
    // Makes it. Throws StoreError.
    QString Anlegen(const QString &kartei) const;
    // Empty where there are none.
    Sicherungsliste Liste(const QString &kartei) const;
    // The name for a backup of this moment; where it is taken already, that of the next free second.
    QString Name(const QString &kartei, const QDateTime &zeit) const;
    // Bytes of the backups of all boxes.
    qint64 Groesse() const;

private:
    QString wurzel_;
};

} // namespace paukfix
