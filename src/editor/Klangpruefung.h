// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

namespace Fehler {
inline constexpr int UngueltigerKlang = 321; // no wave file, or damaged
} // namespace Fehler

// Throws StoreError where the file is not there or is no sound that can be played: what the player itself
// says of it comes too late.
void KlangPruefen(const QString &pfad);

// "0:03", "12:40"; empty where the file does not say.
QString Klanglaenge(const QString &pfad);

} // namespace paukfix
