// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"

#include <QDateTime>
#include <QSet>

#include <optional>

namespace paukfix {

// What the learner is asked and told about a card file while it is opened.
class Oeffnungsfragen
{
public:
    explicit Oeffnungsfragen(Meldungen &meldungen) : meldungen_(meldungen) {}

    // What becomes of a damaged file.
    enum class Rettung
    {
        Reparatur,
        Keine,
        Sicherung
    };

    // What each of both would bring back, in words.
    struct Aussicht
    {
        QString reparatur;
        QString sicherung;
        QDateTime gesichert;
        bool sicherungHatMehr = false; // cards than the repair would save
    };

    // Whether a file of the former database engine is to be converted.
    bool Umwandeln(const QString &pfad);
    // `aussicht`: there is a backup, too. `heute` is the day on which it is read.
    Rettung Retten(const std::optional<Aussicht> &aussicht, const QDate &heute);
    // The file was repaired: what came of it, unless empty, is told, and its report (a file) is offered.
    void Repariert(const QString &ergebnis, const QString &bericht);
    // Whether an older file is to have the sums of its pages; no, where that was asked before.
    bool PruefsummenGeben(const QString &pfad);
    // Whether a file that cannot be opened otherwise is to be opened to be looked at.
    bool Ansehen(const QString &pfad);

private:
    void BerichtZeigen(const QString &datei);

    Meldungen &meldungen_;
    QSet<QString> ohnePruefsummen_; // files that are to stay as they are
};

} // namespace paukfix
