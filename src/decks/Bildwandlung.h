// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace paukfix {

// A picture or sound as a card can have it.
struct Kartenmedium
{
    QByteArray inhalt;
    QString endung; // "jpg", "bmp" or "wav"
};

// A picture of any kind that the toolkit reads. JPEG and BMP stay byte for byte; PNG, WebP, GIF, SVG and the
// rest become JPEG, on white where they are transparent, with 4096 pixels a side at most. Nothing where it
// cannot be read, or was made to harm.
std::optional<Kartenmedium> AlsKartenbild(const QByteArray &inhalt);

} // namespace paukfix
