// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Aufbewahrung.h"
#include "Belegung.h"
#include "CardStore.h"
#include "Eingabewache.h"
#include "Geschehen.h"
#include "KarteEinordnen.h"
#include "Kartenabfrage.h"
#include "Kartenflug.h"

#include <QObject>

#include <exception>

namespace paukfix {

// One card's road through the learning: it is found, asked, moved by its verdict, and what goes wrong is
// reported. From the moment a verdict is shown it is stored on every road, and only once; where it cannot be,
// it is kept until its learner has decided.
class Lernlauf final : public QObject
{
    Q_OBJECT

public:
    // What it works with; all must outlive it.
    struct Teile
    {
        CardStore &kartei;
        Meldungen &meldungen;
        Belegung &belegung;
        Eingabewache &eingabe;
        Kartenflug &flug;
        Aufbewahrung &aufbewahrung;
    };

    explicit Lernlauf(const Teile &teile, QObject *parent = nullptr);

    // What asks the cards: must be there before the first one is asked.
    void SetAbfrage(Kartenabfrage &abfrage) { abfrage_ = &abfrage; }

    // Whether there is an editor that cards can be sent to.
    void SetBearbeitbar(bool bearbeitbar) { bearbeitbar_ = bearbeitbar; }

    // What is said instead of a question while the box is open to be looked at.
    static QString NichtAbgefragt();
    // While the box is at rest: makes the query ready for the card that Image0_Click(fach) would ask.
    void Vorbereiten(int fach);
    // Asks the first card of compartment `fach`, 0 to 5.
    void Image0_Click(int fach);
    // Asks the current card and does what its answer asks for. Throws StoreError where it cannot be read.
    void KarteAbfragen();
    // The box shows what is really stored before the user reads what went wrong.
    void LesefehlerMelden(const QString &kontext, const std::exception &fehler);
    // The desktop's session ends, and nobody knows how long the program may live on: a verdict that is shown
    // is stored at once, and its query is over. False where it cannot be stored, about which is asked later,
    // as nothing may hold up the answer to the desktop.
    bool SitzungEndet();

signals:
    // A query is over, and the box has the keyboard.
    void Zurueckgekehrt();
    // A card was moved by its verdict, and that is stored, or it was deleted.
    void Bewegt(const paukfix::Bewegung &bewegung);
    // The counts of the box may have changed.
    void BoxGeaendert();
    // The learner wants to edit the current card.
    void BearbeitenGewuenscht();
    // Something could not be stored or read, and its user is about to be told.
    void Gescheitert();
    // The card file can no longer be read, and was closed.
    void KarteiVerloren();

private:
    // A card that is asked.
    struct Frage
    {
        GefragteKarte karte;
        Bewegung bewegung;
    };

    void UrteilSpeichern(const Frage &frage);
    void Halten(const Frage &frage, const StoreError &fehler);
    void Zurueckkehren(bool zurBox = true);
    void VerlustMelden(const QString &text);

    Teile teile_;
    Kartenabfrage *abfrage_ = nullptr;
    bool bearbeitbar_ = false;
    bool unterwegs_ = false;     // the box may not have the keyboard yet
    std::optional<Frage> offen_; // a card is asked whose verdict, if there is one, is not stored
};

} // namespace paukfix
