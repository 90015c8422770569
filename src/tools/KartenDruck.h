// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPainter>
#include <QPrinter>
#include <QString>

#include <memory>

// Prints cards, four on a page, each in a quarter of the page's height: the question from 5 % of the quarter
// on, the answer from 55 %, in 14 points. What does not fit ends in an ellipsis. The job begins with the
// first card and goes to the printer when the object ends.
class KartenDruck
{
public:
    explicit KartenDruck(QPrinter &drucker) : drucker_(drucker) {}

    KartenDruck(const KartenDruck &) = delete;
    KartenDruck &operator=(const KartenDruck &) = delete;
    ~KartenDruck() = default;

    // Throws StoreError 482 where the printer takes no job or no further page.
    void Karte(const QString &frageNr, const QString &frage, const QString &antwort);

private:
    void Block(const QRectF &platz, const QString &text);

    QPrinter &drucker_;
    QPainter maler_;
    int aufDerSeite_ = 0;
};

// The default printer, or the first one where none is the default; nothing where no printer is installed (the
// toolkit would print to a file then).
std::unique_ptr<QPrinter> StandardDrucker();
