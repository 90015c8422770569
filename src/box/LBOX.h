// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "BoxZustand.h"
#include "CardStore.h"
#include "Dialoge.h"
#include "Eingabewache.h"
#include "KarteiOeffner.h"
#include "Uhr.h"
#include "Zufall.h"

#include <QMainWindow>
#include <QTimer>

#include <array>
#include <functional>

class Kasten;
class PFUse;
class QLabel;
class QMenu;
class QSessionManager;
class QToolButton;

// What the main window works on.
struct LBoxUmgebung
{
    CardStore &kartei;
    KarteiOeffner &oeffner;
    BoxZustand &zustand;
    AppConfig &konfig;
    Meldungen &meldungen;
    Dialoge &dialoge;
    Zufall &zufall;
    const Uhr &uhr;
    std::function<void(const QString &pfad)> klang = [](const QString &) {}; // plays a sound file
    std::function<void()> stille = [] {};                                    // stops it
    std::function<void()> gemalt = [] {}; // the window has been painted for the first time
    // The window was to be closed while something was under way: the program is to end as soon as that is
    // over.
    std::function<void()> beenden = [] {};
    // Something could not be stored and its user is told: the program is not to end behind his back.
    std::function<void()> gescheitert = [] {};
    QString befehlszeile; // the card file named at the program's start, or empty
};

// What the menu opens beyond the main window. An entry without its function stands in its place, disabled.
struct LBoxFenster
{
    std::function<void()> MKarten; // the card editor, on the current card, not modal
    std::function<void()> Manzeigen;
    std::function<void()> MAscii_Export, MAscii_Import;
    std::function<void()> MThema_ausfiltern, MKartei_anhängen, MKartei_spiegeln;
    std::function<void()> MAlleNeu, MErledigtNeu;
    std::function<void()> MStatistik;
    std::function<void()> Müber;
    // Lets the user pick a card file of KarteiPfad; returns its name without directory, or nothing.
    std::function<QString()> KarteiWechseln;
    // Asked before the main window closes, so that other windows can close first; false keeps it open.
    std::function<bool()> DarfSchliessen;
};

// The main window: the box, from which every query starts, and the menu that opens everything else.
class LBOX final : public QMainWindow
{
public:
    explicit LBOX(LBoxUmgebung umgebung, QWidget *parent = nullptr);
    ~LBOX() override;

    void SetFenster(LBoxFenster fenster);

    // Draws the box anew from FachInfo, and sets VollstesFach.
    void BoxZeichnen();
    // Asks the first card of compartment `fach`, 0 to 5.
    void Image0_Click(int fach);
    // Asks a card that the die picks.
    void PicWürfel_Click();
    // Probes the open card file and sets FehlerStatus; says "Bitte erst eine Datei öffnen" where there is
    // none.
    bool DateiOffenPruefen();
    void AutomatikAus();
    // Whether the system offers a device for sounds; the status line says where it does not.
    void SetTongeraet(bool vorhanden);

    // A query, a roll or the opening of a file is under way.
    bool Beschaeftigt() const { return beschaeftigt_; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum class Braucht
    {
        Nichts,
        OffeneDatei
    };

    // Menu (LBOXMenue.cpp).
    void MenueBauen();
    QAction *Eintrag(QMenu *menue, const QString &name, const QString &text, std::function<void()> tun);
    void FensterEintrag(QMenu *menue, const QString &name, const QString &text,
                        std::function<void()> LBoxFenster::*fenster, Braucht braucht = Braucht::OffeneDatei);
    bool IstGesperrt() const;
    QAction *Strich(QMenu *menue, const QString &name);
    void KonfigZeigen();
    void MSchriftart_Click();
    void MAnimation_Click();

    // A text for menus and buttons, where "&" would underline the next letter.
    static QString OhneKuerzel(QString text);

    // Card files (LBOXDateien.cpp).
    void Form_Load();
    void Mneu_Click();
    void Möffnen_Click();
    void MDat_Click(std::size_t i);
    void KarteiWechseln_Click();
    bool KarteiOeffnen(const QString &pfad);
    void InListe(const QString &pfad);
    void StandZeigen();
    void HinweiseZeigen();
    QString Tastenhinweis() const;

    // Learning (LBOXLernen.cpp).
    void Form_KeyPress(const QKeyEvent &taste);
    void KarteAbfragen();
    void KarteAnimieren(qint16 ergebnis);
    void KarteVerschieben();
    void SitzungEndet(QSessionManager &sitzung);
    void LesefehlerMelden(const QString &kontext, const std::exception &fehler);
    bool Wuerfeln(int &fach);
    void MAutoschalter_Click();
    void AutomatikTakt();
    bool Animiert() const;

    LBoxUmgebung umgebung_;
    LBoxFenster fenster_;
    CardStore &kartei_;
    Meldungen &meldungen_;
    Kasten *kasten_ = nullptr;
    QToolButton *lKartei_ = nullptr;
    QLabel *lTasten_ = nullptr;
    QLabel *lAutomatik_ = nullptr;
    QLabel *lTongeraet_ = nullptr;

    struct FensterVerweis
    {
        QAction *eintrag;
        std::function<void()> LBoxFenster::*fenster;
    };

    std::vector<FensterVerweis> verweise_;
    std::array<QAction *, 5> mDat_{};
    QAction *mStrich_ = nullptr;
    QAction *mAnimation_ = nullptr;
    QAction *mAutoschalter_ = nullptr;
    QAction *karteiWechseln_ = nullptr;
    QTimer takt_;               // of the automatic mode
    qint64 sekunde_ = 0;        // the clock as it was last noted
    int sekundenwechsel_ = 0;   // since the pause of the automatic mode began
    bool beschaeftigt_ = false; // a query, a roll or the opening of a file is under way
    PFUse *abfrage_ = nullptr;  // the query of the current card, until its verdict is stored
    bool geladen_ = false;
    Eingabewache eingabe_{*this};
};
