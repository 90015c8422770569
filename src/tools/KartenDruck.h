// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardList.h"
#include "Druckauftrag.h"
#include "Progress.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace paukfix {

// Prints cards to be cut out and folded: four on a page, each in a column of a quarter of its width, the
// question from 5 % of the page's height on, the answer from 55 %. Thin lines show where to cut (drawn
// through) and where to fold (dashed). Texts stand in 14 points; what is longer is set smaller, and what does
// not fit even then ends in an ellipsis.
class KartenDruck
{
public:
    // Prints from edge to edge of the paper of `drucker`, which must outlive this.
    explicit KartenDruck(QPrinter &drucker);

    // The job begins with the first card. Throws StoreError 482 where the printer takes no job or no further
    // page.
    void Karte(const QString &frageNr, const QString &frage, const QString &antwort);

    // Sends the job. Throws StoreError 482 where it is refused; without a card there is none.
    void Abschicken();

private:
    void LinienZiehen(const QRectF &spalte, bool letzte);
    void Block(const QRectF &platz, const QString &text);

    QPrinter &drucker_;
    std::optional<Druckauftrag> auftrag_;
    int aufDerSeite_ = 0;
};

// The card number that a text stands for: a whole number from 1 to 32767, blanks around it allowed.
std::optional<qint16> Kartennummer(const QString &text);

// Prints these cards of the list, in their order. Returns how many: those that have gone meanwhile are left
// out. Throws StoreError where a card cannot be read or the printer does not take the job.
int KartenDrucken(CardList &liste, const std::vector<std::int64_t> &karten, QPrinter &drucker,
                  const Progress &progress = {});

} // namespace paukfix
