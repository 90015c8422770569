// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "Oeffnung.h"
#include "Oeffnungsfragen.h"
#include "Sicherungen.h"
#include "Verzoegerung.h"

#include <functional>

namespace paukfix {

// Makes and opens card files in front of the learner: hourglass, title, questions, what goes wrong, and the
// box that fills while its cards are counted.
class KarteiOeffner
{
public:
    KarteiOeffner(CardStore &kartei, Meldungen &meldungen, const Clock &clock);
    KarteiOeffner(const KarteiOeffner &) = delete;
    KarteiOeffner &operator=(const KarteiOeffner &) = delete;

    // Replaces KarteiPfad/fileName by a new, empty card file and opens it. Nothing happens for an empty name.
    // Throws StoreError where the file cannot be made.
    void CreateCardFile(QString &fileName);
    // Opens KarteiPfad/fileName, asking whether to convert one of the former database engine, whether to
    // repair a damaged one, and, once in a run of the program for each file, whether an older one is to have
    // the sums of its pages. One that may not be written, or that another program has, is reported, and then
    // opened to be looked at where that is wanted. On failure reports it, leaves no file open and empties
    // `fileName`: never pass CurrentFileName itself.
    void OpenCardFile(QString &fileName, Vertrauen vertrauen = Vertrauen::Keines);
    // Empties the box, shows it so, and measures the clock.
    void ResetBoxTable();

    // Backups are made before a box changes, and offered beside the repair; none before this is called.
    void SichernMit(Sicherungen &sicherungen);
    // A tool is about to change the open box, or to replace it.
    void VorEingriff();

    // The box that is opened.
    CardStore &Kartei() { return kartei_; }

    // Redraws the box.
    std::function<void()> BoxZeichnen = [] {};
    // Gives what is told how far the check or the repair of a file has come, `was` by name, for as long as it
    // takes. What that throws ends it; the opening then fails with the text `abgebrochen` as StoreError 3059.
    std::function<Progress(const QString &was, const QString &abgebrochen)> WartenZeigen =
        [](const QString &, const QString &) { return Progress(); };
    Verzoegerung verzoegerung;

private:
    Oeffnungsmelder Melder();
    Oeffnung Versuchen(const QString &fileName, Vertrauen vertrauen = Vertrauen::Keines);
    void Scheitern(const StoreError &fehler);
    Oeffnung Umwandeln(const QString &fileName, Oeffnung oeffnung);
    Oeffnung Reparieren(const QString &fileName, Oeffnung oeffnung);
    Oeffnungsfragen::Aussicht Aussicht(const QString &path, const Sicherung &sicherung);
    Oeffnung Zurueckholen(const QString &fileName, const Sicherung &sicherung);
    void Tagessicherung();
    Oeffnung PruefsummenGeben(const QString &fileName, Oeffnung oeffnung);

    CardStore &kartei_;
    Meldungen &meldungen_;
    Oeffnungsfragen fragen_;
    const Clock &clock_;
    Sicherungen *sicherungen_ = nullptr;
};

} // namespace paukfix
