// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"

#include <QObject>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace paukfix {

class Themenzeile;

// The line above a card: its number, in which another one is typed to go there, its compartment, "Neue
// Karte", and its topic.
class Kopfzeile final : public QWidget
{
    Q_OBJECT

public:
    explicit Kopfzeile(QWidget *parent);

    void Zeigen(const Kartenkopf &kopf);
    void ThemaZeigen(const QString &thema);
    QString Thema() const;

    // What is typed into the number without Enter is not the card's.
    const QString &Nummer() const { return kopf_.FrageNr; }

    // Puts the caret before `laenge` characters from `stelle` (from 0) on and marks them.
    void ThemaMarkieren(qsizetype stelle, qsizetype laenge);
    // The colours that follow from the ground it stands on.
    void FarbenSetzen(const QPalette &form, const QColor &umriss);

    QLineEdit *Nummernfeld() const { return MaskFrageNr_; }

    QLineEdit *Themenfeld() const;

signals:
    void nummerEingegeben(const QString &nummer);
    void themaGeaendert();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    Kartenkopf kopf_; // as it is shown
    QLineEdit *MaskFrageNr_;
    QLabel *MaskFachNr_;
    QLabel *LabelNeu_;
    Themenzeile *MaskThema_;
    QObject fokuswache_; // goes before the controls do: their going moves the focus
};

} // namespace paukfix
