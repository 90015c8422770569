// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"

#include <QObject>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace paukfix {

class Themenzeile;

// The line above a card: its number, in which another one is typed to go there, its compartment, "Neue
// Karte" or how many pictures and sounds it has, and its topic.
class Kopfzeile final : public QWidget
{
    Q_OBJECT

public:
    explicit Kopfzeile(QWidget *parent);

    void Zeigen(const Formularkopf &kopf);
    void ThemaZeigen(const QString &thema);
    // The card's pictures and sounds are counted; the marks are no part of what is printed.
    void DateienZeigen(const Bildnamen &namen);
    // The marks of the card's files only count them.
    void DateienSchuetzen();
    QString Thema() const;

    // What is typed into the number without Enter is not the card's.
    const QString &Nummer() const { return kopf_.FrageNr; }

    // Puts the caret before `laenge` characters from `stelle` (from 0) on and marks them.
    void ThemaMarkieren(qsizetype stelle, qsizetype laenge);

    QLineEdit *Nummernfeld() const { return MaskFrageNr_; }

    Themenzeile *Themenfeld() const { return MaskThema_; }

    QList<QWidget *> Tabfolge() const;

signals:
    void nummerEingegeben(const QString &nummer);
    void themaGeaendert();
    void bilderGewuenscht();
    void toeneGewuenscht();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    Formularkopf kopf_; // as it is shown
    QLineEdit *MaskFrageNr_;
    QLabel *MaskFachNr_;
    QLabel *fachName_;
    QLabel *LabelNeu_;
    QPushButton *bilder_;
    QPushButton *toene_;
    Themenzeile *MaskThema_;
    QObject fokuswache_; // goes before the controls do: their going moves the focus
};

} // namespace paukfix
