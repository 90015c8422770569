// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lernlauf.h"

#include "BoxRechnung.h"
#include "KarteVerschieben.h"

#include <QScopeGuard>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QString NichtGelesen = u"Die Karte kann nicht gelesen werden: "_s;
const QString NichtGespeichert = u"Die Antwort konnte nicht gespeichert werden: "_s;

} // namespace

Lernlauf::Lernlauf(const Teile &teile, QObject *parent) : QObject(parent), teile_(teile) {}

void Lernlauf::Vorbereiten(int fach)
{
    if (abfrage_ && teile_.kartei.FehlerStatus == 0 && !teile_.belegung.IstGesperrt())
        abfrage_->Vorbereiten(fach);
}

void Lernlauf::Image0_Click(int fach)
{
    CardStore &kartei = teile_.kartei;
    if (kartei.FehlerStatus > 0 || teile_.belegung.IstGesperrt())
        return;
    const auto weiter = qScopeGuard([this] { teile_.eingabe.Weitergeben(); });
    const auto belegt = teile_.belegung.Belegen();
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
    Bewegung bewegung;
    bewegung.frageNr = teile_.kartei.Felder().FrageNr.Integer();
    bewegung.von = teile_.kartei.Felder().FachNr.Integer();
    teile_.flug.Legen(QString::number(bewegung.frageNr));
    offen_ = true;
    unterwegs_ = true;
    const auto vorbei = qScopeGuard([this] { offen_ = false; });
    const std::optional<AbfrageErgebnis> ergebnis = abfrage_->Fragen(bearbeitbar_);
    const bool bearbeiten = ergebnis == AbfrageErgebnis::Bearbeiten;
    if (IstUrteil(ergebnis)) {
        bewegung.richtig = ergebnis == AbfrageErgebnis::Richtig;
        bewegung.nach = ZielFach(bewegung.von, bewegung.richtig);
        if (teile_.flug.Fliegt()) {
            Zurueckkehren(); // a key ends the flight
            teile_.flug.KarteAnimieren(bewegung.von, *bewegung.nach, bewegung.richtig);
            teile_.flug.Verbergen();
        }
        UrteilSpeichern(bewegung); // while the windows still change
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
void Lernlauf::UrteilSpeichern(Bewegung bewegung)
{
    if (!std::exchange(offen_, false))
        return;
    try {
        KarteVerschieben(teile_.kartei, teile_.meldungen, bewegung.richtig, [this] { Zurueckkehren(); });
        emit Bewegt(bewegung);
    } catch (const std::exception &fehler) {
        LesefehlerMelden(NichtGespeichert, fehler);
    }
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
    offen_ = false;
    abfrage_->Schliessen();
    try {
        KarteEinordnen(teile_.kartei, *urteil == AbfrageErgebnis::Richtig);
        return true;
    } catch (const std::exception &) {
        QMetaObject::invokeMethod(
            this,
            [this, fehler = std::current_exception()] {
                try {
                    std::rethrow_exception(fehler);
                } catch (const std::exception &grund) {
                    LesefehlerMelden(NichtGespeichert, grund);
                }
            },
            Qt::QueuedConnection);
        return false;
    }
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
    emit KarteiVerloren();
    teile_.meldungen.Zeigen(text + u"\n\nDie Kartei wurde geschlossen."_s);
    teile_.meldungen.SetTitel(u"Merkkasten"_s);
}

} // namespace paukfix
