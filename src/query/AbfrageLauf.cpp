// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageLauf.h"

namespace paukfix {

std::optional<bool> AbfrageLauf::Pruefen(const Antwort &antwort)
{
    stand_ = Stand::Geprueft;
    if (const auto *text = std::get_if<QString>(&antwort))
        return GetippteAntwortRichtig(karte_.Antwort_1_Klartext, *text);
    if (const auto *kreuze = std::get_if<Kreuze>(&antwort))
        return KreuzeRichtig(*kreuze, karte_.Antwort_ch);
    return std::nullopt;
}

void AbfrageLauf::Urteilen(bool richtig)
{
    stand_ = Stand::Beurteilt;
    ergebnis_ = richtig ? AbfrageErgebnis::Richtig : AbfrageErgebnis::Falsch;
}

const QString &AbfrageLauf::Bild() const
{
    return stand_ == Stand::Beurteilt ? BildNachUrteil(karte_, ergebnis_ == AbfrageErgebnis::Richtig)
                                      : karte_.Medium[1];
}

const QString &AbfrageLauf::Klang() const
{
    return stand_ == Stand::Beurteilt ? KlangNachUrteil(karte_, ergebnis_ == AbfrageErgebnis::Richtig)
                                      : karte_.Medium[6];
}

} // namespace paukfix
