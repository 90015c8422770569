// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "DiskCalls.h"
#include "Stromausfall.h"

#include <QList>

#include <map>
#include <random>

namespace paukfix {

// Follows everything that this process does to the files below a directory, the engine and the toolkit
// included, and keeps what the disk may hold when the power fails at some moment: of what was not synced yet,
// each piece of 512 bytes is there or not, in any order; of the names that were made, changed and taken away
// since their directory was synced each one, too. One at a time.
class Plattenspur
{
public:
    explicit Plattenspur(const QString &ordner);

    // The program has reported one more thing as done.
    void Gemeldet();

    QList<Stromausfall::Bild> bilder;

private:
    struct Stueck
    {
        qint64 stelle = 0;
        QByteArray bytes{};
        bool kuerzen = false;
    };

    struct Datei
    {
        QByteArray fest{}; // on the disk for sure
        QList<Stueck> offen{};
    };

    // A name that was taken away, one that came, or both.
    struct Umbenennung
    {
        QString weg, da;
        int datei = 0;
    };

    enum class Rest
    {
        Nichts,
        Alles,
        Zufall,
    };

    void Geschehen(const DiskCalls::Change &aenderung);
    void Schreiben(const DiskCalls::Change &aenderung);
    void Sichern(const DiskCalls::Change &aenderung);
    void Aufnehmen();
    bool Kommt(Rest rest);
    QByteArray Inhalt(const Datei &datei, Rest rest);
    static void Anwenden(QByteArray &inhalt, const Stueck &stueck);

    DiskCalls aufrufe_;
    std::map<int, Datei> dateien_;
    std::map<ino_t, int> nummern_;        // of files, by their inodes
    std::map<QString, int> namen_, fest_; // as the program sees them, and on the disk for sure
    QList<Umbenennung> offen_;
    int gemeldet_ = 0;
    std::mt19937 zufall_{4711};
};

} // namespace paukfix
