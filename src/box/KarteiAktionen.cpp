// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiAktionen.h"

#include "Packen.h"
#include "Paketoeffner.h"
#include "Step.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

bool IstKartei(const QString &pfad)
{
    return pfad.right(4).toLower() == u".pzb"_s;
}

} // namespace

KarteiAktionen::KarteiAktionen(const Teile &teile, const QString &startverzeichnis, QObject *parent)
    : QObject(parent), teile_(teile), arbeitsverzeichnis_(startverzeichnis)
{
}

void KarteiAktionen::Starten(const QString &befehlszeile)
{
    if (befehlszeile.isEmpty()) {
        Oeffnen();
    } else if (!Kennt(befehlszeile)) {
        teile_.dienste.meldungen.Zeigen(u"Bitte nur .pzb Dateien"_s);
        Oeffnen();
    } else if (IstPaket(befehlszeile)) {
        if (OeffnenUndMerken(befehlszeile) == Erfolg::Gescheitert)
            teile_.dienste.meldungen.Zeigen(u"Fehler beim Öffnen"_s);
    } else if (!KarteiOeffnen(befehlszeile)) {
        teile_.dienste.meldungen.Zeigen(u"Fehler beim Öffnen"_s);
    }
    emit Fertig();
}

void KarteiAktionen::Neu()
{
    CardStore &kartei = teile_.kartei;
    const QString pfad =
        teile_.dienste.dialoge.DateiSpeichern(KarteiDialog(u"Merkkasten anlegen"_s, kartei.KarteiPfad));
    if (pfad.isEmpty() || teile_.belegung.IstBelegt())
        return;
    if (!IstKartei(pfad)) {
        teile_.dienste.meldungen.Zeigen(u"Bitte nur .pzb Dateien"_s);
        return;
    }
    Ort ort = Geteilt(pfad);
    const bool warOffen = kartei.IsOpen();
    const QString vorher = std::exchange(kartei.KarteiPfad, ort.verzeichnis);
    const auto belegt = teile_.belegung.Belegen();
    emit WirdAngelegt(ort.name);
    const bool angelegt = Step(teile_.dienste.meldungen, u"Die Datei konnte nicht angelegt werden: "_s,
                               [&] { teile_.oeffner.CreateCardFile(ort.name); });
    if (angelegt && !ort.name.isEmpty()) {
        arbeitsverzeichnis_ = ort.verzeichnis;
        InListe(pfad);
    } else if (warOffen) {
        kartei.KarteiPfad = vorher; // the file that was open lies there
        if (QString alterName = kartei.CurrentFileName; !kartei.IsOpen())
            teile_.oeffner.OpenCardFile(alterName);
    }
    emit Fertig();
}

void KarteiAktionen::Oeffnen()
{
    DateiDialog dialog = KarteiDialog(u"Merkkasten öffnen"_s, teile_.kartei.KarteiPfad);
    dialog.weitere = u"Gepackte Karteien (*.pzbz)|*.pzbz"_s;
    const QString pfad = teile_.dienste.dialoge.DateiOeffnen(dialog);
    if (pfad.isEmpty() || teile_.belegung.IstBelegt())
        return;
    if (!Kennt(pfad))
        teile_.dienste.meldungen.Zeigen(u"Bitte nur .pzb Dateien"_s);
    else if (OeffnenUndMerken(pfad) == Erfolg::Gescheitert)
        teile_.dienste.meldungen.Zeigen(u"Fehler beim Öffnen"_s);
    emit Fertig();
}

void KarteiAktionen::DateiOeffnen(const QString &pfad)
{
    OeffnenUndMerken(pfad);
    emit Fertig();
}

bool KarteiAktionen::Kennt(const QString &pfad)
{
    return IstKartei(pfad) || IstPaket(pfad);
}

KarteiAktionen::Erfolg KarteiAktionen::OeffnenUndMerken(const QString &pfad)
{
    if (teile_.belegung.IstBelegt())
        return Erfolg::Gesagt;
    QString kartei = pfad;
    if (IstPaket(pfad)) {
        const Ort ort = Geteilt(pfad);
        const auto belegt = teile_.belegung.Belegen();
        kartei = KarteiAusPaket(ort.verzeichnis + u'/' + ort.name, teile_.oeffner, teile_.dienste.meldungen);
        if (kartei.isEmpty())
            return Erfolg::Gesagt;
    }
    if (!KarteiOeffnen(kartei))
        return Erfolg::Gescheitert;
    InListe(kartei);
    return Erfolg::Offen;
}

void KarteiAktionen::ZuletztOeffnen(std::size_t i)
{
    KarteiOeffnen(teile_.dienste.konfig.LetzteDatei(i));
    emit Fertig();
}

void KarteiAktionen::Umgezogen(const QString &pfad)
{
    arbeitsverzeichnis_ = Geteilt(pfad).verzeichnis;
    InListe(pfad);
}

void KarteiAktionen::Wechseln(const QString &name)
{
    if (!name.isEmpty())
        KarteiOeffnen(teile_.kartei.CardPath(name));
    emit Fertig();
}

bool KarteiAktionen::DateiOffenPruefen()
{
    try {
        teile_.kartei.Karten().RecordCount();
        teile_.kartei.FehlerStatus = 0;
        return true;
    } catch (const StoreError &fehler) {
        teile_.kartei.FehlerStatus = static_cast<qint16>(qBound(1, fehler.Number(), 0x7FFF));
    }
    teile_.dienste.meldungen.Zeigen(u"Bitte erst eine Datei öffnen"_s);
    return false;
}

// Not cleaned up: behind a link, ".." is another directory than the spelling says.
KarteiAktionen::Ort KarteiAktionen::Geteilt(const QString &pfad) const
{
    const QString mitStrichen = QDir::fromNativeSeparators(pfad);
    const qsizetype strich = mitStrichen.lastIndexOf(u'/');
    QString verzeichnis = strich == 0 ? u"/"_s : mitStrichen.left(std::max<qsizetype>(strich, 0));
    if (verzeichnis.isEmpty())
        verzeichnis = arbeitsverzeichnis_;
    else if (QDir::isRelativePath(verzeichnis))
        verzeichnis = arbeitsverzeichnis_ + u'/' + verzeichnis;
    return {verzeichnis, mitStrichen.mid(strich + 1)};
}

// False where no file is open then.
bool KarteiAktionen::KarteiOeffnen(const QString &pfad)
{
    if (teile_.belegung.IstBelegt())
        return false;
    const auto belegt = teile_.belegung.Belegen();
    Ort ort = Geteilt(pfad);
    teile_.kartei.KarteiPfad = ort.verzeichnis;
    emit WirdGeoeffnet(ort.name);
    teile_.oeffner.OpenCardFile(ort.name);
    if (ort.name.isEmpty())
        return false;
    arbeitsverzeichnis_ = ort.verzeichnis;
    return true;
}

void KarteiAktionen::InListe(const QString &pfad)
{
    teile_.dienste.konfig.Sichern(1, pfad,
                                  u"Die Liste der letzten Dateien konnte nicht gespeichert werden: "_s);
}

} // namespace paukfix
