// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

class KarteiOeffner;
class Meldungen;

// The card file to open for the package at `paket`: unpacked beside it, or where it was unpacked before, as
// the learner wants it. Empty where there is none, which was told, or where he wants none.
QString KarteiAusPaket(const QString &paket, KarteiOeffner &oeffner, Meldungen &meldungen);

} // namespace paukfix
