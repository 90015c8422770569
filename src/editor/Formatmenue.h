// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Formatierung.h"

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QMenuBar;

namespace paukfix {

class KartenTextBox;

// The menu "Format", its commands and two more that only the bar of icons has: the colour and the way back to
// the standard font. They act on the text box of the form that has the keyboard, which is outlined, and show
// the format at its caret; where none has it, they are disabled. The menu itself, and another window in
// front, take the keyboard just for a while.
class Formatmenue final : public QObject
{
    Q_OBJECT

public:
    // Adds the menu to the bar; both belong to the bar's window.
    Formatmenue(const Dienste &dienste, QWidget *formular, QMenuBar *leiste);

    // From now on nothing can be formatted.
    void Sperren();

signals:
    void gewaehlt(); // an entry, before it acts

private:
    void FokusWechselt(QWidget *neu);
    void SetBox(KartenTextBox *box);
    void FormatZeigen();
    QMenu *Farbmenue();
    void Formatieren(QTextCharFormat (*befehl)(const Auswahlformat &));
    void MSchriftart_Click();
    void Standardschrift_Click();

    Dienste dienste_;
    QWidget *formular_;
    QMenu *MFont_;
    QList<QAction *> aktionen_; // all of them
    bool gesperrt_ = false;
    QPointer<KartenTextBox> box_; // that the commands act on
};

} // namespace paukfix
