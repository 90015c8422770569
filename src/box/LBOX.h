// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Automatik.h"
#include "Belegung.h"
#include "BoxRechnung.h"
#include "BoxZustand.h"
#include "Boxmenue.h"
#include "Dienste.h"
#include "Eingabewache.h"
#include "KarteiAktionen.h"
#include "Kartenflug.h"
#include "LBoxFenster.h"
#include "Lernlauf.h"
#include "Wuerfelspiel.h"

#include <QMainWindow>
#include <QTimer>

class QLabel;
class QToolButton;

namespace paukfix {

class Kasten;

// How the program was started.
struct Programmstart
{
    QString befehlszeile; // the card file that was named, or empty
    QString verzeichnis;  // where it was: a name without directory lies there
};

// The main window: the menu, the drawer with the cards, and the status line. It makes its parts known to each
// other and shows what they say.
class LBOX final : public QMainWindow
{
    Q_OBJECT

public:
    // Box, opener and state must outlive it.
    LBOX(CardStore &kartei, KarteiOeffner &oeffner, BoxZustand &zustand, const Dienste &dienste,
         const Programmstart &start, QWidget *parent = nullptr);
    ~LBOX() override;

    void SetFenster(LBoxFenster fenster);

    // The query, which works with Eingabe(); it must be there before a card is asked, and outlive this.
    void SetAbfrage(Kartenabfrage &abfrage) { lernlauf_.SetAbfrage(abfrage); }

    Eingabewache &Eingabe() { return eingabe_; }

    // Draws the box anew from FachInfo, and sets VollstesFach.
    void BoxZeichnen();
    // Whether the system offers a device for sounds; the status line says where it does not.
    void SetTongeraet(bool vorhanden);

    Automatik &Automatisch() { return automatik_; }

    KarteiAktionen &Aktionen() { return aktionen_; }

    // A query, a roll or the opening of a file is under way.
    bool Beschaeftigt() const { return belegung_.IstBelegt(); }

signals:
    // The window has been painted for the first time.
    void Gemalt();
    // The box was drawn anew: it may have changed.
    void BoxGezeichnet();
    // The window was to be closed while something was under way: the program is to end as soon as that is
    // over.
    void BeendenGewuenscht();
    // Something could not be stored and its user is told: the program is not to end behind his back.
    void Gescheitert();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void StatuszeileBauen();
    void Verbinden();
    void Form_Load();
    void Form_KeyPress(const QKeyEvent &taste);
    void KarteiWechseln_Click();
    BoxBild Rechnen();
    void StandZeigen();
    void HinweiseZeigen();
    QString Tastenhinweis() const;

    CardStore &kartei_;
    KarteiOeffner &oeffner_;
    BoxZustand &zustand_;
    Dienste dienste_;
    QString befehlszeile_;
    LBoxFenster fenster_;
    Kasten *kasten_;
    Belegung belegung_{*this};
    Eingabewache eingabe_{*this};
    Kartenflug flug_;
    Lernlauf lernlauf_;
    Wuerfelspiel wuerfelspiel_;
    Automatik automatik_;
    KarteiAktionen aktionen_;
    Boxmenue menue_;
    QToolButton *lKartei_ = nullptr;
    QLabel *lTasten_ = nullptr;
    QLabel *lAutomatik_ = nullptr;
    QLabel *lTongeraet_ = nullptr;
    QAction *karteiWechseln_ = nullptr;
    QTimer ruhe_; // of the box: then its next query is made ready
    bool geladen_ = false;
};

} // namespace paukfix
