// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>

class QHBoxLayout;
class QPushButton;
class QWidget;

namespace paukfix {

// The buttons below a card, children of `form`, in one line.
struct Knopfzeile
{
    explicit Knopfzeile(QWidget *form);

    // In the order of Tab.
    QList<QWidget *> Alle() const;

    QPushButton *CZZurück, *CZurück, *CVor, *CVVor, *CEOF, *Cadd, *Cback;
    QHBoxLayout *zeile; // without a parent until it is put into a layout
};

} // namespace paukfix
