// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteVerschieben.h"

void KarteVerschieben(CardStore &kartei, Meldungen &meldungen, qint16 ergebnis)
{
    // Stored before the message, which stays as long as its reader likes.
    if (KarteEinordnen(kartei, ergebnis) == FachErledigt) {
        meldungen.Zeigen(
            QStringLiteral("Sehr gut!\nDiese Frage beherrschen Sie.\nDie Frage ist vorerst erledigt"),
            Meldungen::Symbol::Ausruf);
    }
}
