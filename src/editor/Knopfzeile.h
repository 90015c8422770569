// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace paukfix {

class Tastenkappe;
struct Formularkopf;

// What stands below a card, children of `form`, in one line: the buttons, and among them the card's place in
// the order in which they walk.
struct Knopfzeile
{
    explicit Knopfzeile(QWidget *form);

    // In the order of Tab, then what has no keyboard.
    QList<QWidget *> Alle() const;
    void Zeigen(const Formularkopf &kopf) const;

    QPushButton *CZZurück, *CZurück, *CVor, *CVVor, *CEOF, *Cadd, *Cback;
    QLabel *platz;
    Tastenkappe *tasten;
    QHBoxLayout *zeile; // without a parent until it is put into a layout
};

} // namespace paukfix
