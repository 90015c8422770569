// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

class QLabel;

namespace paukfix {

struct Abfragekarte;

// The head of the query's card, one small line: its number, its compartment, its topic where it has one, and
// how many other cards the compartment holds.
class Kartenkopf final : public QWidget
{
public:
    explicit Kartenkopf(QWidget *eltern);

    // `uebrig`: the other cards of the card's compartment.
    void Zeigen(const Abfragekarte &karte, int uebrig);

private:
    QLabel *Wert(const QString &name, QLabel *label);

    QLabel *MaskFrageNr_;
    QLabel *MaskFachNr_;
    QLabel *neu_; // what compartment 0 is called
    QLabel *themaTitel_;
    QLabel *MaskThema_;
    QLabel *uebrig_;
};

} // namespace paukfix
