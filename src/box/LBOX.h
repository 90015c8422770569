// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Automatik.h"
#include "Belegung.h"
#include "BoxRechnung.h"
#include "Boxmenue.h"
#include "Dienste.h"
#include "Eingabewache.h"
#include "Geschehen.h"
#include "KarteiAktionen.h"
#include "Kartenflug.h"
#include "LBoxFenster.h"
#include "Lernlauf.h"
#include "Ruecknahme.h"
#include "Wuerfelspiel.h"

#include <QMainWindow>
#include <QTimer>

namespace paukfix {

class Kasten;
class Statuszeile;

// How the program was started.
struct Programmstart
{
    QString befehlszeile; // the card file that was named, or empty
    QString verzeichnis;  // where it was: a name without directory lies there
    bool weiter = false;  // the card file that was used last is to be opened, if there is one
};

// The main window: the menu, the drawer with the cards, and the status line. It makes its parts known to each
// other and shows what they say.
class LBOX final : public QMainWindow
{
    Q_OBJECT

public:
    // Box and opener must outlive it.
    LBOX(CardStore &kartei, KarteiOeffner &oeffner, const Dienste &dienste, const Programmstart &start,
         QWidget *parent = nullptr);
    ~LBOX() override;

    void SetFenster(LBoxFenster fenster);

    // The query, which works with Eingabe(); it must be there before a card is asked, and outlive this.
    void SetAbfrage(Kartenabfrage &abfrage) { lernlauf_.SetAbfrage(abfrage); }

    Eingabewache &Eingabe() { return eingabe_; }

    // Shows what is open and what is in it, and sets VollstesFach.
    void BoxZeichnen();

    // The compartment with the highest fill ratio as of the last redraw of the box; 0 while 1 to 5 are empty.
    int VollstesFach() const { return vollstesFach_; }

    Statuszeile &Status() { return *status_; }

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
    void Verbinden();
    void Form_Load();
    void Form_KeyPress(const QKeyEvent &taste);
    void Weiter();
    void Bewegt(const Bewegung &bewegung);
    const LBoxFenster::Einlesefenster &EinlesefensterFuer(const QString &pfad) const;
    void Einlesen(const QString &pfad);
    BoxBild Rechnen();
    void HinweiseZeigen();

    CardStore &kartei_;
    KarteiOeffner &oeffner_;
    Dienste dienste_;
    QString befehlszeile_;
    bool weiter_;
    LBoxFenster fenster_;
    Kasten *kasten_;
    Belegung belegung_{*this};
    Eingabewache eingabe_{*this};
    Kartenflug flug_;
    Aufbewahrung aufbewahrung_;
    Lernlauf lernlauf_;
    Wuerfelspiel wuerfelspiel_;
    Automatik automatik_;
    KarteiAktionen aktionen_;
    Ruecknahme ruecknahme_;
    Boxmenue menue_;
    Statuszeile *status_;
    Bilanz bilanz_;
    QString geschehen_, geschehenKurz_; // what happened last to the open file, and in few words
    int vollstesFach_ = 0;
    QAction *karteiWechseln_ = nullptr;
    QTimer ruhe_; // of the box: then its next query is made ready
    bool geladen_ = false;
};

} // namespace paukfix
