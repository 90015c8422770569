// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Belegung.h"
#include "Dienste.h"
#include "KarteiOeffner.h"

#include <QObject>

#include <cstddef>

namespace paukfix {

// The roads on which card files are made, opened and changed for another one.
class KarteiAktionen final : public QObject
{
    Q_OBJECT

public:
    // What it works with; all must outlive it.
    struct Teile
    {
        CardStore &kartei;
        KarteiOeffner &oeffner;
        Dienste dienste;
        Belegung &belegung;
    };

    // `startverzeichnis` is where a name without directory lies until a card file was opened.
    KarteiAktionen(const Teile &teile, const QString &startverzeichnis, QObject *parent = nullptr);

    // Opens the file that was named at the program's start, or asks for one where `befehlszeile` is empty.
    void Starten(const QString &befehlszeile);
    void Neu();
    void Oeffnen();
    // A file opened from the list of recent files keeps its place in it. `i` counts from 0.
    void ZuletztOeffnen(std::size_t i);
    // Opens the card file at `pfad`, or that of the package there, which joins the recent ones.
    void DateiOeffnen(const QString &pfad);
    // The open box has been saved as another card file, `pfad`, and is open there.
    void Umgezogen(const QString &pfad);
    // Can DateiOeffnen open a file of this name?
    static bool Kennt(const QString &pfad);
    // Opens another file of KarteiPfad, named without directory; nothing where `name` is empty.
    void Wechseln(const QString &name);
    // Probes the open card file and sets FehlerStatus; says "Bitte erst eine Datei öffnen" where there is
    // none.
    bool DateiOffenPruefen();

    // The directory of the file that was last made or opened here, where names without directory lie.
    const QString &Arbeitsverzeichnis() const { return arbeitsverzeichnis_; }

signals:
    void WirdAngelegt(const QString &name);
    void WirdGeoeffnet(const QString &name);
    // Whatever came of it: another file may be open now, or none.
    void Fertig();

private:
    struct Ort
    {
        QString verzeichnis, name;
    };

    // What became of a file that was to be opened.
    enum class Erfolg
    {
        Offen,
        Gescheitert,
        Gesagt // nothing was opened, and the learner knows why
    };

    Erfolg OeffnenUndMerken(const QString &pfad);
    Ort Geteilt(const QString &pfad) const;
    bool KarteiOeffnen(const QString &pfad);
    void InListe(const QString &pfad);

    Teile teile_;
    QString arbeitsverzeichnis_;
};

} // namespace paukfix
