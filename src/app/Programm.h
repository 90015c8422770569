// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "Befehlszeile.h"
#include "CardStore.h"
#include "Clock.h"
#include "Dienste.h"
#include "Fensterwechsel.h"
#include "Handbuchseiten.h"
#include "Hilfetaste.h"
#include "KarteiOeffner.h"
#include "LBOX.h"
#include "MeldungenFenster.h"
#include "PFAendern.h"
#include "PFUse.h"
#include "Programmende.h"
#include "SearchHit.h"
#include "Statuszeile.h"
#include "Tonausgabe.h"
#include "Verlaufsbuch.h"
#include "Werkzeugfenster.h"
#include "Wiederholungswache.h"
#include "Zufall.h"

#include <QApplication>
#include <QByteArray>
#include <QStringList>

#include <functional>
#include <memory>

namespace paukfix {

// The one object that owns everything the program shares, and that makes its windows known to each other.
class Programm
{
public:
    // `laufverzeichnis` is where the running program lies.
    explicit Programm(const QString &laufverzeichnis);
    Programm(const Programm &) = delete;
    Programm &operator=(const Programm &) = delete;
    ~Programm();

    // Plays the intro, unless a card file is to be opened, and shows the main window; false where the user
    // closed the intro instead of going on. Of files that are not opened the user is told.
    bool Starten(const Befehlszeile &befehl);

private:
    void VerzeichnisseSetzen(const QString &laufverzeichnis);
    void AbfrageBauen();
    void EditorZeigen();
    void EditorGeschlossen();
    // What opens a dialog of the file tools.
    template <typename Fenster>
    std::function<void()> Werkzeug();
    // What opens one of them with a file.
    template <typename Fenster>
    std::function<void(const QString &)> Einlesefenster();
    void UebersichtZeigen();
    void SicherungenZeigen();
    void VerlaufOeffnen();
    void UeberZeigen();
    // Over the window that has the keyboard.
    void HandbuchZeigen(const QString &seite);
    QString KarteiWaehlen();

    Programmende ende_{[this] { return lbox_ && lbox_->Beschaeftigt(); }};
    Wiederholungswache wiederholungen_;
    Hilfetaste hilfe_{[this] { HandbuchZeigen(HandbuchseiteZu(QApplication::activeWindow())); }};
    MeldungenFenster meldungen_;
    DialogeFenster dialoge_;
    SystemClock clock_;
    MersenneZufall zufall_;
    Tonausgabe ton_{meldungen_, [this](bool da) { lbox_->Status().SetTongeraet(da); }};
    AppConfig konfig_{meldungen_};
    Dienste dienste_{meldungen_, dialoge_, clock_, zufall_, ton_, konfig_};
    CardStore kartei_;
    KarteiOeffner oeffner_{kartei_, meldungen_, clock_};
    std::unique_ptr<Sicherungen> sicherungen_;
    std::unique_ptr<Verlaufsbuch> verlauf_;
    SearchHit suche_;
    std::unique_ptr<LBOX> lbox_;
    std::unique_ptr<Fensterwechsel> wechsel_;
    std::unique_ptr<PFUse> abfrage_;   // shown for each card
    std::unique_ptr<PFÄndern> editor_; // the last one that was open; the next one takes its place
};

} // namespace paukfix
