// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zurueckholen.h"

#include "CardFile.h"
#include "FreshFile.h"
#include "Sicherungsstand.h"

namespace paukfix {

void Zurueckholen(CardStore &kartei, const QString &sicherung, const QString &platz)
{
    const bool istOffene = kartei.IsOpen() && !kartei.NurAnsehen() && SameFile(platz, kartei.OffenerPfad());
    CheckNameLength(platz);
    if (!istOffene)
        CheckReplaceable(platz); // another program may be learning with it
    FreshFile neue(platz);
    neue.Make([&](const QString &pfad) {
        CopyFile(sicherung, pfad);
        KarteiPruefen(pfad);
    });
    if (istOffene)
        kartei.CloseCardFile(); // a card file is never unlinked under the engine
    neue.TakePlace();
}

} // namespace paukfix
