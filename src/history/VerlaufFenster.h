// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Tagesrechnung.h"
#include "Verlaufsbuch.h"
#include "Verlaufswerte.h"

#include <QDialog>

class QBoxLayout;
class QButtonGroup;
class QGridLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTabBar;
class QTableView;

namespace paukfix {

class Antwortbild;
class Faecherbild;
class Kennzahl;
class Meldungen;
class VerlaufTabelle;

// The window "Verlauf": a box's answers and compartments over days, as pictures and as a table. It shows what
// was known when it was opened.
class VerlaufFenster final : public QDialog
{
public:
    // `kartei` is the name of the box.
    VerlaufFenster(const QString &kartei, const Verlaufsbuch::Auskunft &auskunft, const QDate &heute,
                   QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QBoxLayout *KopfBauen(const QString &kartei);
    void KennzahlenBauen();
    void InhaltBauen();
    QBoxLayout *KnoepfeBauen();
    void ZeitraumZeigen();
    void ReiterZeigen();
    void Anordnen();
    void cmdTabelle_Click();
    void cmdKopieren_Click();

    std::vector<Tagesstand> tage_;
    Verlaufswerte werte_;
    QDate heute_;
    bool niedrig_ = false; // too low for both pictures
    bool alsTabelle_ = false;
    QButtonGroup *zeitraum_ = nullptr;
    QGridLayout *kennzahlenPlatz_ = nullptr;
    std::array<Kennzahl *, 4> kennzahlen_{};
    QTabBar *reiter_ = nullptr;
    QStackedWidget *inhalt_ = nullptr;
    Antwortbild *antworten_ = nullptr;
    Faecherbild *faecher_ = nullptr;
    QTableView *ansicht_ = nullptr;
    VerlaufTabelle *tabelle_ = nullptr;
    QPushButton *cmdTabelle_ = nullptr;
    QLabel *lKopiert_ = nullptr;
    QLabel *lHinweis_ = nullptr;
};

// Asks and says what is to be settled first, and shows the window until it is closed.
void VerlaufZeigen(Verlaufsbuch &buch, const QString &kartei, const QDate &heute, Meldungen &meldungen,
                   QWidget *parent);

} // namespace paukfix
