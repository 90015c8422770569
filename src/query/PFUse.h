// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AbfrageLauf.h"
#include "CardStore.h"
#include "Dienste.h"
#include "Fensterplatz.h"
#include "Kartenabfrage.h"
#include "Kartenbilder.h"
#include "Vorauslese.h"

#include <QDialog>
#include <QString>

#include <optional>

class QKeyEvent;
class QLayout;
class QPushButton;

namespace paukfix {

class Fensterwechsel;
class GrossesBild;
class Kartenflaeche;
class Tastenkappe;

// The query window: arranges card, buttons and hints, and leads a run through its states. It is made once and
// shown for each card.
class PFUse final : public QDialog, public Kartenabfrage
{
public:
    // `store` and `wechsel`, which brings the keyboard to this window and back, must outlive it.
    PFUse(CardStore &store, const Dienste &dienste, Fensterwechsel &wechsel, QWidget *parent = nullptr);

    void Vorbereiten(int fach) override;
    std::optional<AbfrageErgebnis> Fragen(bool bearbeitbar) override;
    std::optional<AbfrageErgebnis> Urteil() const override;
    void Schliessen() override;
    void Zurueckkehren() override;
    void Abschliessen() override;

    void done(int ergebnis) override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLayout *KnoepfeBauen();
    void Zeigen(const Abfragekarte &karte);
    void TabFolge();
    void HinweiseZeigen();
    void BildZeigen();
    void BildGrossZeigen();
    void KlangSpielen();

    void Cpruefen_Click();
    void Ergebnis_R_Click();
    void Ergebnis_F_Click();
    void UrteilZeigen(bool richtig);
    void Clöschen_Click();
    void Command1_Click();
    void Command3_Click();

    CardStore &store_;
    Dienste dienste_;
    Fensterwechsel &wechsel_;
    AbfrageLauf lauf_;
    Vorauslese voraus_; // what the hidden window holds, untouched; nothing once it was shown
    Fensterplatz platz_{*this};
    Kartenbilder bilder_;
    bool geht_ = false; // the window is on its way out

    Kartenflaeche *karte_ = nullptr;
    GrossesBild *gross_ = nullptr;
    QPushButton *nochEinmal_ = nullptr; // plays the sound of the moment again
    QPushButton *Cpruefen_ = nullptr;   // in one place with Command3_
    QPushButton *Clöschen_ = nullptr;
    QPushButton *Command1_ = nullptr;
    QPushButton *Command3_ = nullptr;
    Tastenkappe *hinweise_ = nullptr;
};

} // namespace paukfix
