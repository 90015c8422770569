// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Aufbewahrung.h"
#include "Kartenablage.h"
#include "Kartenweg.h"
#include "Meldungen.h"

#include <functional>
#include <optional>
#include <utility>

namespace paukfix {

// What stands above a card on the form.
struct Formularkopf
{
    QString FrageNr;
    QString FachNr;
    bool neu = false;        // "Neue Karte"
    CardPosition platz = {}; // in the order in which one walks; without a number where it is not known
};

// Whether something was changed; tells when that changes.
class Merker
{
public:
    Merker &operator=(bool wert)
    {
        if (std::exchange(wert_, wert) != wert)
            gewechselt(wert);
        return *this;
    }

    operator bool() const { return wert_; }

    std::function<void(bool)> gewechselt = [](bool) {};

private:
    bool wert_ = false;
};

// The form as the editor's commands see it.
class Kartensicht
{
public:
    Kartensicht() = default;
    Kartensicht(const Kartensicht &) = delete;
    Kartensicht &operator=(const Kartensicht &) = delete;
    virtual ~Kartensicht() = default;

    virtual Kartenblatt Inhalt() const = 0;
    // Replaces all that the form holds; a new card comes in the standard font.
    virtual void Zeigen(const Kartenblatt &blatt, const Formularkopf &kopf) = 0;
    // Just the line above the card: the form keeps what was typed.
    virtual void KopfZeigen(const Formularkopf &kopf) = 0;
    // What the form holds is in the record now: none of its texts is changed any more.
    virtual void Gespeichert() = 0;
    virtual void FokusAufFrage() = 0;
    virtual void FokusAufAntwort(std::size_t box) = 0;
};

// The commands of the card editor. It shows the recordset's current card, or holds a blank new card that
// becomes a record only when it is stored. Every error is shown, none is thrown.
class CardEditor
{
public:
    using Richtung = paukfix::Richtung;

    // All must outlive it.
    CardEditor(CardStore &kartei, Meldungen &meldungen, Aufbewahrung &aufbewahrung, Kartensicht &formular);

    Merker cardDirty;            // the shown card was changed and not stored
    qint16 validationFailed = 0; // 1 after a check that the card did not pass

    // The form holds a card that is not stored yet.
    bool Neu() const { return neu_; }

    // Opens on the current card; where there is none, on the first, in an empty file on the blank new card.
    // It walks in the order that the recordset has then.
    void Load();
    // The current card, or the blank new card where there is none.
    void AktuelleZeigen();
    void NewCardForm();

    // Where disk or file fail, the writer is asked what is to become of the card. False when it was not
    // stored; the form then holds what it held, unless he has discarded it, which is true too.
    bool StoreCard();
    bool StoreIfDirty();

    void CVor();
    void CZurück();
    void CEOF();
    // One step of a run through the cards, after a StoreIfDirty. False when the run is at its end.
    bool Laufschritt(Richtung richtung);

    // To the card whose number was typed, or to the nearest one.
    void Springen(const QString &eingabe);
    void Kopieren();
    void Loeschen();

    // Store or stay, and where it may not be stored ask whether to discard it. True when nothing is lost by
    // closing.
    bool Verlassen();
    // The desktop ends: what is changed is stored; where it cannot be, its writer decides whether to discard
    // it, and where he may not be asked, nothing is discarded and nothing said. False when the session's end
    // is to be cancelled.
    bool SitzungEndet(bool darfFragen);
    // The editor has closed: what its last check said is past, and the box walks its cards in its own order.
    void Geschlossen();

private:
    bool ValidateCard(const Kartenblatt &blatt);
    // What became of the card; nothing where it was told that it cannot be stored.
    std::optional<Aufbewahrung::Ausgang> Speichern(const Kartenblatt &blatt, Kopiervorlage vorlage);
    void Ablegen(const Kartenblatt &blatt, Kopiervorlage vorlage);
    void Abgelegt(bool neue);
    void StandOnShownCard();
    bool ShowCard(std::optional<Richtung> schritt = std::nullopt);
    void Schritte(Richtung richtung);
    void AmEndeAnhalten(Richtung richtung);
    Formularkopf NeuerKopf() const;

    CardStore &kartei_;
    Meldungen &meldungen_;
    Aufbewahrung &aufbewahrung_;
    Kartensicht &formular_;
    bool neu_ = true;
    double nummer_ = 0;  // of the shown card, while it is not new
    CardPosition platz_; // of the shown card; without a number where it must be counted
    int versuchte_ = 0;  // the number under which the new card may be in the file although storing it failed
    bool vertagt_ = false; // the writer has closed the question what is to become of the card
};

} // namespace paukfix
