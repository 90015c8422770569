// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Formatierung.h"

#include <QObject>

class QMenu;
class QMenuBar;

namespace paukfix {

class KartenTextBox;

// The menu "Format" and its commands. They act on the text box of the form that has the keyboard; where none
// has it, the menu is disabled. The menu itself, and another window in front, take the keyboard just for a
// while.
class Formatmenue final : public QObject
{
    Q_OBJECT

public:
    // Adds the menu to the bar; both belong to the bar's window.
    Formatmenue(const Dienste &dienste, QWidget *formular, QMenuBar *leiste);

signals:
    void gewaehlt();                          // an entry, before it acts
    void boxGewechselt(KartenTextBox *aktiv); // null for none

private:
    void FokusWechselt(QWidget *neu);
    void SetBox(KartenTextBox *box);
    void Formatieren(QTextCharFormat (*befehl)(const Auswahlformat &));
    void MSchriftart_Click();

    Dienste dienste_;
    QWidget *formular_;
    QMenu *MFont_;
    KartenTextBox *box_ = nullptr; // that the commands act on
};

} // namespace paukfix
