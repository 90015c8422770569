// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "KarteiOeffner.h"
#include "Sicherungen.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace paukfix {

// The backups of the open box: when they were made, what is in them, what has changed since; and the ways to
// have one back, in the box's place or beside it.
class Sicherungsfenster final : public QDialog
{
    Q_OBJECT

public:
    Sicherungsfenster(KarteiOeffner &oeffner, Sicherungen &sicherungen, const Dienste &dienste,
                      QWidget *parent = nullptr);

signals:
    // A backup has become a card file of its own, which is to be opened.
    void NeueKartei(const QString &pfad);

private:
    QWidget *ListeBauen();
    QWidget *KnoepfeBauen();
    void Auflisten();
    void SeitdemZeigen();
    const Sicherung *Gewaehlte() const;
    void Zurueckholen_Click();
    void AlsNeueKartei_Click();
    bool JetzigenStandSichern();

    KarteiOeffner &oeffner_;
    Sicherungen &sicherungen_;
    Dienste dienste_;
    Sicherungsliste zeilen_;
    QLabel *ueberschrift_ = nullptr;
    QTreeWidget *liste_ = nullptr;
    QLabel *seitdem_ = nullptr;
    QPushButton *zurueckholen_ = nullptr;
    QPushButton *alsNeue_ = nullptr;
};

} // namespace paukfix
