// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Clock.h"
#include "Sicherungsordner.h"
#include "StoreError.h"

#include <QObject>

#include <future>
#include <optional>
#include <vector>

namespace paukfix {

// Backs up the open box: copies its file at once, while nothing changes it, and checks and syncs the copy on
// a thread of its own. Only then does it bear a backup's name. A box that is the same as its newest backup
// byte for byte is not copied again. What fails is told once in the life of this object, and stops nothing.
class Sicherungen : public QObject
{
    Q_OBJECT

public:
    // `wurzel` is the directory of all backups; it is made when it is needed.
    Sicherungen(const QString &wurzel, const Clock &clock, QObject *parent = nullptr);
    Sicherungen(const Sicherungen &) = delete;
    Sicherungen &operator=(const Sicherungen &) = delete;
    // Waits for the copies that are being checked.
    ~Sicherungen() override;

    // Backs up the box once a day. `kartei` is the open file, which holds `karten` cards.
    void VorAenderung(const QString &kartei, int karten);
    // Backs up the box before something that changes many of its cards, whatever was backed up today.
    void VorEingriff(const QString &kartei, int karten);
    // Keeps a file that is no sound card file of ours (damaged, of the former format) as it is, under a name
    // with `endung` behind, which the list does not show; the last three of a box. Tells whether it is kept.
    bool Aufheben(const QString &datei, const QString &endung);

    // The backups of the box; those that are just being checked are waited for.
    Sicherungsliste Liste(const QString &kartei);
    // Whether its newest backup is the same byte for byte.
    bool IstGesichert(const QString &kartei);
    // Its newest backup that is sound today.
    std::optional<Sicherung> NeuesteGute(const QString &kartei);

signals:
    void Gescheitert(const QString &text);

private:
    void Abwarten();
    void Melden(const StoreError &fehler);

    Sicherungsordner ordner_;
    const Clock &clock_;
    std::vector<std::future<void>> laufende_;
    QString heuteGesichert_; // the box that was backed up on `tag_`
    QDate tag_;
    bool gemeldet_ = false;
};

} // namespace paukfix
