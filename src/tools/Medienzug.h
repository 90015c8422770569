// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Beilagen.h"
#include "Medienmitnahme.h"
#include "Werkbank.h"

namespace paukfix {

// Do the pictures and sounds that cards name come along to another directory?
enum class Medien
{
    Bleiben,
    Kommen
};

// The pictures and sounds of cards that come from the directory `von` to the card file `kartei` in the
// directory `ort`, with a window that tells of it and can cancel it.
class Medienzug
{
public:
    Medienzug(const Werkbank &bank, const QString &von, const DirectoryLock &ort, const QString &kartei);

    Medienmitnahme &Mitnahme() { return mitnahme_; }

    // Puts the files at their places, just before the cards are stored. The window goes.
    void Hinlegen();

    // The cards were stored, or could not be: what `karten` do not name goes again. Where nobody can tell,
    // the next opening of the card file finds out.
    void Abschliessen(CardRecordset &karten) noexcept;

    // What did not come along; mostly nothing.
    QString Bericht() const { return mitnahme_.Bericht(); }

    qsizetype Anzahl() const { return beilagen_.Anzahl(); }

private:
    Progress warten_;
    Takt takt_;
    Beilagen beilagen_;
    Medienmitnahme mitnahme_;
};

// Shows what did not come along, where that is anything.
void MedienBerichten(Meldungen &meldungen, const QString &bericht);

} // namespace paukfix
