// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Bildwandlung.h"

namespace paukfix {

// A sound of any kind that libsndfile reads (MP3, Ogg, FLAC, AIFF ...). Waves that cards play stay byte for
// byte, all else becomes one of 16 bits. Nothing where it cannot be read or would be longer than is ever
// played.
std::optional<Kartenmedium> AlsKartenton(const QByteArray &inhalt);

} // namespace paukfix
