// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Druckauftrag.h"

#include <QString>

#include <optional>

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
