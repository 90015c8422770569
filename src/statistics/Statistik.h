// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "StatistikRechnung.h"

#include <QDialog>

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace paukfix {

class Flaeche;

// The statistics window: what the session has changed. It shows the figures of the moment it was made.
class Statistik final : public QDialog
{
public:
    explicit Statistik(const StatistikWerte &werte, QWidget *parent = nullptr);

private:
    void Form_Load(const StatistikWerte &werte);
    QLayout *ZeitenBauen(const StatistikWerte &werte);
    QLayout *FaecherBauen(const StatistikWerte &werte);
    QLayout *FragenBauen(const StatistikWerte &werte);
    QLayout *LegendeBauen();
    QLabel *Beschriftung(const QString &text, bool fett = false);
    QLineEdit *Feld(const QString &name, const QString &zugaenglich, const QString &text);
    QLineEdit *Zahl(const QString &name, const QString &zugaenglich, const QString &text);

    Flaeche *karte_ = nullptr;
    QPushButton *cmdZurück_ = nullptr;
};

} // namespace paukfix
