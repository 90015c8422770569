// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"
#include "StoreTestSupport.h"

#include <algorithm>
#include <array>

namespace paukfix {

// The queues of a box in memory: which card stands behind which. What running numbers they have does not
// matter.
class Lernstand
{
public:
    explicit Lernstand(QList<CardRecord> karten)
    {
        std::ranges::sort(karten, {}, [](const CardRecord &karte) {
            return std::pair{karte.FachNr, karte.FachLfdNr};
        });
        for (const CardRecord &karte : karten)
            faecher_[static_cast<std::size_t>(karte.FachNr)] << static_cast<int>(karte.FrageNr);
    }

    static Lernstand In(const QString &pfad) { return Lernstand(ReadCards(pfad)); }

    // Moves the cursor.
    static Lernstand In(CardRecordset &karten)
    {
        Lernstand stand({});
        karten.SetIndex(u"BoxKey");
        for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext())
            stand.faecher_.at(static_cast<std::size_t>(karten[u"FachNr"].Integer()))
                << karten[u"FrageNr"].Integer();
        return stand;
    }

    void Antworten(int frageNr, bool richtig)
    {
        for (std::size_t fach = 0; fach < faecher_.size(); ++fach)
            if (faecher_[fach].removeOne(frageNr)) {
                faecher_[static_cast<std::size_t>(ZielFach(static_cast<int>(fach), richtig))] << frageNr;
                return;
            }
    }

    const QList<int> &Schlange(int fach) const { return faecher_[static_cast<std::size_t>(fach)]; }

    bool Passt(const FachTabelle &tabelle) const
    {
        for (std::size_t fach = 0; fach < faecher_.size(); ++fach)
            if (tabelle[fach].Anzahl != faecher_[fach].size())
                return false;
        return true;
    }

    bool operator==(const Lernstand &anderer) const
    {
        return std::ranges::equal(faecher_, anderer.faecher_, [](const auto &eins, const auto &zwei) {
            return std::ranges::equal(eins, zwei);
        });
    }

private:
    std::array<QList<int>, FachAnzahl> faecher_;
};

} // namespace paukfix
