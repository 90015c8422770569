// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tonausgabe.h"

#include <utility>

namespace paukfix {

Tonausgabe::Tonausgabe(Meldungen &meldungen, std::function<void(bool)> geraetDa)
    : spieler_([&meldungen](const std::string &text) { meldungen.Zeigen(QString::fromStdString(text)); }),
      geraetDa_(std::move(geraetDa))
{
}

void Tonausgabe::Spielen(const QString &pfad)
{
    spieler_.PlaySound(pfad.toStdString());
    geraetDa_(!spieler_.IsSilent());
}

void Tonausgabe::Stille()
{
    spieler_.StopSound();
}

} // namespace paukfix
