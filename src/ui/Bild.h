// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "StoreError.h"

#include <QImage>
#include <QSize>
#include <QString>

namespace paukfix {

namespace Fehler {
inline constexpr int PfadZugriff = 75;      // there, but not to be read
inline constexpr int UngueltigesBild = 481; // neither BMP nor JPEG, damaged, or too large
} // namespace Fehler

// How a picture that is larger than its place is read: so that it just fits, or halved as often as it still
// fills the place, which takes less time, and looks the same whatever its place was.
enum class Einpassen
{
    Genau,
    Halbieren
};

// Reads a BMP or JPEG file, told by its content, turned as its camera says. A picture of more than 4096
// pixels on a side is read smaller, and one that is larger than `platz` (pixels) as `wie` says.
// Throws StoreError 53, 76, 75 or 481.
QImage BildLesen(const QString &pfad, const QSize &platz = {}, Einpassen wie = Einpassen::Genau);

// The picture that a card names (Mediendatei): from the directory of the card file or, where it is not there,
// from the program's; halved to fit into `platz`, where there is one. Throws StoreError with the text that
// tells it.
QImage BildSuchen(const QString &name, const QString &karteiPfad, const QString &programmPfad,
                  const QSize &platz = {});
// The same; shows what went wrong and returns a null image then.
QImage BildLaden(const QString &name, const QString &karteiPfad, const QString &programmPfad,
                 Meldungen &meldungen, const QSize &platz = {});

} // namespace paukfix
