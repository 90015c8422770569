// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lernlauf.h"

#include "BoxRechnung.h"
#include "FehlerVon.h"
#include "KarteVerschieben.h"
#include "Karteititel.h"

#include <QScopeGuard>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QString NichtGelesen = u"Die Karte kann nicht gelesen werden: "_s;
const QString NichtGespeichert = u"Die Antwort konnte nicht gespeichert werden: "_s;

void Beurteilen(Bewegung &bewegung, bool richtig)
{
    bewegung.richtig = richtig;
    bewegung.nach = ZielFach(bewegung.von, richtig);
}

} // namespace

Lernlauf::Lernlauf(const Teile &teile, QObject *parent) : QObject(parent), teile_(teile) {}

QString Lernlauf::NichtAbgefragt()
{
    return u"Die Kartei ist nur zum Ansehen geöffnet. Karten werden nicht abgefragt."_s;
}

void Lernlauf::Vorbereiten(int fach)
{
    if (abfrage_ && teile_.kartei.FehlerStatus == 0 && !teile_.kartei.NurAnsehen() &&
        !teile_.belegung.IstGesperrt())
        abfrage_->Vorbereiten(fach);
}

void Lernlauf::Image0_Click(int fach)
{
    CardStore &kartei = teile_.kartei;
    if (kartei.FehlerStatus > 0 || teile_.belegung.IstGesperrt())
        return;
    const auto weiter = qScopeGuard([this] { teile_.eingabe.Weitergeben(); });
    const auto belegt = teile_.belegung.Belegen();
    if (kartei.NurAnsehen()) {
        teile_.meldungen.Zeigen(NichtAbgefragt());
        return;
    }
    if (const auto voll = ZuVollesFach(kartei.FachInfo, fach)) {
        teile_.meldungen.Zeigen(u"Fach Nr. %1 ist zu voll  Bitte erst dieses Fach bearbeiten"_s.arg(*voll));
        return;
    }
    try {
        if (!ErsteKarte(kartei.Karten(), fach)) {
            teile_.meldungen.Zeigen(u"Fach Nr. %1 ist leer"_s.arg(fach));
            return;
        }
        KarteAbfragen();
    } catch (const std::exception &fehler) {
        LesefehlerMelden(NichtGelesen, fehler);
    }
}

void Lernlauf::KarteAbfragen()
{
    // Read before there is a verdict: what fails behind it would be in the way of storing it.
    Frage frage{.karte = Gefragt(teile_.kartei), .bewegung = {}};
    Bewegung &bewegung = frage.bewegung;
    bewegung.frageNr = teile_.kartei.Felder().FrageNr.Integer();
    bewegung.von = frage.karte.fach;
    teile_.flug.Legen(QString::number(bewegung.frageNr));
    offen_ = frage;
    unterwegs_ = true;
    const auto vorbei = qScopeGuard([this] { offen_.reset(); });
    const std::optional<AbfrageErgebnis> ergebnis = abfrage_->Fragen(bearbeitbar_);
    const bool bearbeiten = ergebnis == AbfrageErgebnis::Bearbeiten;
    if (IstUrteil(ergebnis)) {
        Beurteilen(bewegung, ergebnis == AbfrageErgebnis::Richtig);
        if (teile_.flug.Fliegt()) {
            Zurueckkehren(); // a key ends the flight
            teile_.flug.KarteAnimieren(bewegung.von, *bewegung.nach, bewegung.richtig);
            teile_.flug.Verbergen();
        }
        UrteilSpeichern(frage); // while the windows still change
    } else if (ergebnis == AbfrageErgebnis::Geloescht) {
        emit Bewegt(bewegung);
    }
    teile_.flug.Verbergen();
    emit BoxGeaendert();
    Zurueckkehren(!bearbeiten); // to the editor, the box need not come first
    abfrage_->Abschliessen();
    if (bearbeiten)
        emit BearbeitenGewuenscht();
}

// Unless the end of the session has done so.
void Lernlauf::UrteilSpeichern(const Frage &frage)
{
    if (!std::exchange(offen_, std::nullopt))
        return;
    const auto fehler = FehlerVon([&] {
        KarteVerschieben(teile_.kartei, teile_.meldungen, frage.karte, frage.bewegung.richtig,
                         [this] { Zurueckkehren(); });
    });
    if (fehler)
        Halten(frage, *fehler);
    else
        emit Bewegt(frage.bewegung);
}

// The verdict is kept until its learner has decided.
void Lernlauf::Halten(const Frage &frage, const StoreError &fehler)
{
    if (!Aufbewahrung::IstStoerung(fehler)) {
        LesefehlerMelden(NichtGespeichert, fehler);
        return;
    }
    const auto ausgang = teile_.aufbewahrung.Entscheiden(
        {.kontext = NichtGespeichert,
         .trost = u"Die Antwort ist noch nicht verloren."_s,
         .speichern =
             [&] { KarteVerschieben(teile_.kartei, teile_.meldungen, frage.karte, frage.bewegung.richtig); },
         .gescheitert =
             [this] {
                 Zurueckkehren();
                 teile_.flug.Verbergen();
                 emit Gescheitert();
             }},
        fehler);
    if (ausgang == Aufbewahrung::Ausgang::Gespeichert) {
        emit Bewegt(frage.bewegung);
        emit BoxGeaendert();
        return;
    }
    NeuZaehlen(teile_.kartei, fehler.Number());
    if (teile_.kartei.IsOpen())
        emit BoxGeaendert();
    else
        VerlustMelden(QString());
}

void Lernlauf::Zurueckkehren(bool zurBox)
{
    if (!std::exchange(unterwegs_, false))
        return;
    abfrage_->Zurueckkehren();
    if (zurBox)
        emit Zurueckgekehrt();
}

bool Lernlauf::SitzungEndet()
{
    const std::optional<AbfrageErgebnis> urteil = offen_ ? abfrage_->Urteil() : std::nullopt;
    if (!urteil)
        return true;
    Frage frage = *std::exchange(offen_, std::nullopt);
    Beurteilen(frage.bewegung, *urteil == AbfrageErgebnis::Richtig);
    abfrage_->Schliessen();
    const auto fehler =
        FehlerVon([&] { KarteEinordnen(teile_.kartei, frage.karte, frage.bewegung.richtig); });
    if (fehler)
        QMetaObject::invokeMethod(
            this, [this, frage, grund = *fehler] { Halten(frage, grund); }, Qt::QueuedConnection);
    return !fehler;
}

void Lernlauf::LesefehlerMelden(const QString &kontext, const std::exception &fehler)
{
    const auto *bekannt = dynamic_cast<const StoreError *>(&fehler);
    const QString text = kontext + ErrorText(fehler);
    Zurueckkehren();
    emit Gescheitert();
    NeuZaehlen(teile_.kartei, bekannt ? bekannt->Number() : Fehler::ZuWenigSpeicher);
    teile_.flug.Verbergen();
    if (teile_.kartei.IsOpen()) {
        emit BoxGeaendert();
        teile_.meldungen.Zeigen(text);
        return;
    }
    VerlustMelden(text + u"\n\n"_s);
}

void Lernlauf::VerlustMelden(const QString &text)
{
    emit KarteiVerloren();
    teile_.meldungen.Zeigen(text + u"Die Kartei wurde geschlossen."_s);
    teile_.meldungen.SetTitel(Karteititel(teile_.kartei));
}

} // namespace paukfix
