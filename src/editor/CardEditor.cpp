// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditor.h"

#include "KarteLoeschen.h"
#include "Kartenweg.h"
#include "Step.h"

#include <cmath>
#include <exception>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

using Ausgang = Aufbewahrung::Ausgang;
using Comparison = CardRecordset::Comparison;

const auto LeseFehler = u"Fehler beim Lesen der Karte: "_s;
const auto SpeicherFehler = u"Fehler beim Speichern der Karte: "_s;

} // namespace

CardEditor::CardEditor(CardStore &kartei, Meldungen &meldungen, Aufbewahrung &aufbewahrung,
                       Kartensicht &formular)
    : kartei_(kartei), meldungen_(meldungen), aufbewahrung_(aufbewahrung), formular_(formular)
{
}

void CardEditor::Load()
{
    NewCardForm();
    Step(meldungen_, LeseFehler, [this] {
        if (!AufKarte(kartei_.Felder()))
            kartei_.Karten().MoveFirst();
        AktuelleZeigen();
    });
}

void CardEditor::AktuelleZeigen()
{
    const bool karte = Step(meldungen_, LeseFehler, [this] {
        const CardRecordset &karten = kartei_.Karten();
        if (karten.AtBOF() || karten.AtEOF())
            NewCardForm();
        else
            ShowCard();
    });
    if (!karte)
        NewCardForm();
}

bool CardEditor::ShowCard(std::optional<Richtung> schritt)
{
    Kartenblatt blatt;
    Formularkopf kopf;
    const bool gelesen = Step(meldungen_, LeseFehler, [&] {
        const CardFieldHandles &felder = kartei_.Felder();
        nummer_ = felder.FrageNr.Number();
        kopf.FrageNr = QString::number(nummer_, 'g', 15);
        kopf.FachNr = QString::number(felder.FachNr.Integer());
        blatt = BlattLesen(felder);
        platz_ = kopf.platz = Platz(kartei_.Karten(), platz_, schritt);
    });
    // What cannot be read must not leave the last card in the form.
    if (!gelesen) {
        NewCardForm();
        return false;
    }
    neu_ = false;
    versuchte_ = 0;
    cardDirty = false;
    formular_.Zeigen(blatt, kopf);
    return true;
}

Formularkopf CardEditor::NeuerKopf() const
{
    return {QString::number(kartei_.HighestCardNumber + 1), QString::number(FachNeu), true};
}

void CardEditor::NewCardForm()
{
    neu_ = true;
    versuchte_ = 0;
    cardDirty = false;
    platz_ = {};
    formular_.Zeigen({}, NeuerKopf());
}

bool CardEditor::ValidateCard(const Kartenblatt &blatt)
{
    const Pruefung pruefung = BlattPruefen(blatt);
    validationFailed = pruefung.mangel == Mangel::Keiner ? 0 : 1;
    kartei_.FehlerStatus = validationFailed;
    if (validationFailed == 0)
        return true;
    if (pruefung.mangel == Mangel::KeineFrage)
        formular_.FokusAufFrage();
    else
        formular_.FokusAufAntwort(pruefung.antwort);
    meldungen_.Zeigen(MangelText(pruefung.mangel));
    return false;
}

bool CardEditor::StoreCard()
{
    vertagt_ = false;
    const Kartenblatt blatt = formular_.Inhalt();
    if (!ValidateCard(blatt))
        return false;
    const auto ausgang = Speichern(blatt, Kopiervorlage::Keine);
    vertagt_ = ausgang == Ausgang::Vertagt;
    return ausgang && !vertagt_;
}

std::optional<Aufbewahrung::Ausgang> CardEditor::Speichern(const Kartenblatt &blatt, Kopiervorlage vorlage)
{
    const bool neue = neu_ || vorlage == Kopiervorlage::AktuelleKarte;
    std::optional<Ausgang> ausgang;
    Step(meldungen_, SpeicherFehler, [&] {
        ausgang = aufbewahrung_.Speichern({.kontext = SpeicherFehler,
                                           .trost = u"Die Karte steht noch im Formular."_s,
                                           .speichern = [&] { Ablegen(blatt, vorlage); },
                                           .vertagbar = true});
    });
    if (ausgang == Ausgang::Gespeichert) {
        Abgelegt(neue);
    } else if (ausgang == Ausgang::Verworfen && neu_) {
        NewCardForm();
    } else if (ausgang == Ausgang::Verworfen) {
        Step(meldungen_, LeseFehler, [this] { StandOnShownCard(); });
        AktuelleZeigen();
    } else if (neu_) {
        formular_.KopfZeigen(NeuerKopf());
    }
    return ausgang;
}

// Throws StoreError.
void CardEditor::Ablegen(const Kartenblatt &blatt, Kopiervorlage vorlage)
{
    const bool kopie = vorlage == Kopiervorlage::AktuelleKarte;
    if (versuchte_ > 0 && StehtInDerKartei(kartei_.Karten(), versuchte_) == true) {
        // An attempt that failed has stored it all the same: it must not be there twice.
        kartei_.FachInfo.Zaehlen(kartei_.Karten());
        if (kopie)
            return;
        neu_ = false;
        nummer_ = std::exchange(versuchte_, 0);
        formular_.KopfZeigen({QString::number(nummer_), QString::number(FachNeu)});
    }
    if (!neu_)
        StandOnShownCard();
    if (!neu_ && !kopie) {
        KarteUeberschreiben(kartei_, blatt);
        return;
    }
    const Ablage ablage = KarteAnlegen(kartei_, blatt, vorlage);
    if (!ablage.fehler)
        return;
    versuchte_ = ablage.nummer;
    std::rethrow_exception(ablage.fehler);
}

void CardEditor::Abgelegt(bool neue)
{
    if (!neue) {
        cardDirty = false;
        formular_.Gespeichert();
        return;
    }
    NewCardForm();
    Step(meldungen_, SpeicherFehler, [&] {
        // The file's first card: the recordset is to stand on it.
        if (kartei_.HighestCardNumber == 1) {
            kartei_.Karten().MovePrevious();
            kartei_.Karten().MoveNext();
        }
    });
}

// Whatever else moved the shared recordset: a card is stored and deleted where it is shown.
void CardEditor::StandOnShownCard()
{
    CardRecordset &karten = kartei_.Karten();
    const CardFieldHandles &felder = kartei_.Felder();
    if (AufKarte(felder) && felder.FrageNr.Number() == nummer_)
        return;
    const NachNummer nachNummer(karten);
    karten.Seek(Comparison::Equal, nummer_);
    if (karten.NoMatch())
        throw StoreError(Fehler::KeinDatensatz,
                         u"Die Karte Nr. %1 ist nicht mehr in der Kartei."_s.arg(nummer_, 0, 'g', 15));
}

bool CardEditor::StoreIfDirty()
{
    return !cardDirty || StoreCard();
}

void CardEditor::Schritte(Richtung richtung)
{
    Step(meldungen_, LeseFehler, [&] {
        if (AmEnde(kartei_.Karten(), richtung) || !StoreIfDirty())
            return;
        CardRecordset &karten = kartei_.Karten(); // the card may have been stored in another file
        Bewegen(karten, richtung);
        if (AmEnde(karten, richtung))
            AmEndeAnhalten(richtung);
        else
            ShowCard(richtung);
    });
}

// Behind the last card comes a new one, unless the box is only looked at: then the last one stays.
void CardEditor::AmEndeAnhalten(Richtung richtung)
{
    if (kartei_.NurAnsehen())
        Bewegen(kartei_.Karten(), richtung == Richtung::Vor ? Richtung::Zurueck : Richtung::Vor);
    else
        NewCardForm();
}

void CardEditor::CVor()
{
    Schritte(Richtung::Vor);
}

void CardEditor::CZurück()
{
    Schritte(Richtung::Zurueck);
}

bool CardEditor::Laufschritt(Richtung richtung)
{
    bool weiter = false;
    Step(meldungen_, LeseFehler, [&] {
        CardRecordset &karten = kartei_.Karten();
        if (AmEnde(karten, richtung))
            return;
        Bewegen(karten, richtung);
        if (AmEnde(karten, richtung))
            AmEndeAnhalten(richtung);
        else
            weiter = ShowCard(richtung);
    });
    return weiter;
}

void CardEditor::CEOF()
{
    if (!StoreIfDirty())
        return;
    Step(meldungen_, LeseFehler, [this] {
        CardRecordset &karten = kartei_.Karten();
        if (!karten.AtEOF()) {
            karten.MoveLast();
            karten.MoveNext();
        }
    });
    NewCardForm();
}

void CardEditor::Springen(const QString &eingabe)
{
    if (!StoreIfDirty())
        return;
    Step(meldungen_, LeseFehler, [&] {
        CardRecordset &karten = kartei_.Karten();
        if (OhneKarten(karten))
            return;
        bool istZahl = false;
        const double nummer = eingabe.trimmed().toDouble(&istZahl);
        istZahl = istZahl && std::isfinite(nummer);
        const NachNummer nachNummer(karten);
        if (istZahl)
            karten.Seek(Comparison::Equal, nummer);
        if (istZahl && !karten.NoMatch())
            return;
        meldungen_.Zeigen(u"Karte nicht gefunden: "_s + eingabe);
        if (!istZahl)
            return;
        karten.Seek(Comparison::AtLeast, nummer);
        if (karten.NoMatch())
            karten.Seek(Comparison::AtMost, nummer);
    });
    AktuelleZeigen();
}

void CardEditor::Kopieren()
{
    // A blank card has nothing to copy: its check says so.
    if (neu_ && !cardDirty) {
        StoreCard();
        return;
    }
    const double nummer = neu_ ? kartei_.HighestCardNumber + 1 : nummer_;
    if (!StoreIfDirty())
        return;
    Springen(QString::number(nummer, 'g', 15));
    if (neu_)
        return;
    const Kartenblatt blatt = formular_.Inhalt();
    if (!ValidateCard(blatt) || Speichern(blatt, Kopiervorlage::AktuelleKarte) != Ausgang::Gespeichert) {
        AktuelleZeigen();
        return;
    }
    const QString kopie = QString::number(kartei_.HighestCardNumber);
    meldungen_.Zeigen(u"Karte kopiert nach: "_s + kopie);
    Springen(kopie);
}

void CardEditor::Loeschen()
{
    if (neu_) {
        meldungen_.Zeigen(u"Eine neue Karte kann nicht gelöscht werden"_s);
        return;
    }
    if (IstLetzteKarte(kartei_.FachInfo, Erledigte::ZaehlenNicht)) {
        meldungen_.Zeigen(u"Die letzte Karte kann nicht gelöscht werden"_s);
        return;
    }
    if (meldungen_.Fragen(u"Diese Karte wirklich löschen"_s, Meldungen::Antwort::Nein) !=
        Meldungen::Antwort::Ja)
        return;
    bool geloescht = false;
    Step(meldungen_, u"Fehler beim Löschen der Karte: "_s, [&] {
        StandOnShownCard();
        const Loeschung loeschung = KarteLoeschen(kartei_);
        geloescht = loeschung.geloescht;
        if (loeschung.fehler)
            throw *loeschung.fehler;
    });
    if (!geloescht)
        return;
    cardDirty = false;
    platz_ = {};
    CVor();
}

bool CardEditor::Verlassen()
{
    if (StoreIfDirty())
        return true;
    if (vertagt_)
        return false;
    const auto antwort = meldungen_.Fragen(u"Diese Karte ist nicht gespeichert. Änderungen verwerfen?"_s,
                                           Meldungen::Antwort::Nein);
    if (antwort == Meldungen::Antwort::Nein)
        return false;
    cardDirty = false;
    return true;
}

bool CardEditor::SitzungEndet(bool darfFragen)
{
    if (!cardDirty)
        return true;
    if (darfFragen)
        return Verlassen();
    const Kartenblatt blatt = formular_.Inhalt();
    if (BlattPruefen(blatt).mangel != Mangel::Keiner)
        return false;
    try {
        const bool neue = neu_;
        Ablegen(blatt, Kopiervorlage::Keine);
        Abgelegt(neue);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

void CardEditor::Geschlossen()
{
    if (!kartei_.IsOpen())
        return;
    kartei_.FehlerStatus = 0;
    Ordnen(kartei_.Karten(), u"BoxKey");
}

} // namespace paukfix
