// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachInfo.h"
#include "Sitzung.h"

#include <QHash>
#include <QString>

#include <optional>
#include <utility>

namespace paukfix {

class CardRecordset;

// What a query has made of a card.
struct Bewegung
{
    int frageNr = 0;
    int von = 0;
    std::optional<int> nach; // none: the card was deleted
    bool richtig = false;
};

// The name of a compartment inside a sentence: "Neu", "Fach 1", "erledigt".
QString Fachname(int fach);

// A sentence about it, and about the compartment that it has made empty; `danach` is the box after it.
QString Geschehen(const Bewegung &bewegung, const FachTabelle &danach);
// The same where there is room for few words only.
QString GeschehenKurz(const Bewegung &bewegung);

// How the session goes, for its learner: right, wrong, and how many cards stand in a higher compartment than
// they did when they were first asked.
class Bilanz
{
public:
    // An answer of `sitzung`, counted there already. Another session begins anew.
    void Zaehlen(const Bewegung &bewegung, const Sitzung &sitzung);
    // Answers were taken back or given again: looks where the cards stand now. Moves the cursor.
    void Nachsehen(CardRecordset &karten);

    // All are empty while nothing was answered. The short one has the answers only.
    QString Text(const Sitzung &sitzung) const;
    static QString Kurz(const Sitzung &sitzung);
    // Since when, with the day where it is not `heute`, and how many.
    static QString Seither(const Sitzung &sitzung, const QDate &heute);

private:
    QDateTime beginn_;                       // of the session that is counted
    QHash<int, std::pair<int, int>> karten_; // by number: the compartment at first, and now
};

} // namespace paukfix
