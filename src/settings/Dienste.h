// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "Clock.h"
#include "Dialoge.h"
#include "Meldungen.h"
#include "Ton.h"
#include "Zufall.h"

namespace paukfix {

// What the windows are given beside the open box. All of it lives as long as the program.
struct Dienste
{
    Meldungen &meldungen;
    Dialoge &dialoge;
    const Clock &clock;
    Zufall &zufall;
    Ton &ton;
    AppConfig &konfig;
};

} // namespace paukfix
