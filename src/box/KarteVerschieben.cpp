// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteVerschieben.h"

namespace paukfix {

using namespace Qt::StringLiterals;

void KarteVerschieben(CardStore &kartei, Meldungen &meldungen, bool richtig,
                      const std::function<void()> &vorMeldung)
{
    // Stored before the message, which stays as long as its reader likes.
    if (KarteEinordnen(kartei, richtig) == FachErledigt) {
        vorMeldung();
        meldungen.Zeigen(u"Sehr gut!\nDiese Frage beherrschen Sie.\nDie Frage ist vorerst erledigt"_s,
                         Meldungen::Symbol::Ausruf);
    }
}

} // namespace paukfix
