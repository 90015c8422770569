// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "SoundPlayer.h"
#include "Ton.h"

#include <functional>

namespace paukfix {

// The sounds of the program on the system's sound device.
class Tonausgabe final : public Ton
{
public:
    // `geraetDa` is told after each sound whether the system offers a device.
    Tonausgabe(Meldungen &meldungen, std::function<void(bool)> geraetDa);

    void Spielen(const QString &pfad) override;
    void Stille() override;

private:
    SoundPlayer spieler_;
    std::function<void(bool)> geraetDa_;
};

} // namespace paukfix
