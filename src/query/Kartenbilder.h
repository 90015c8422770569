// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"

#include <QImage>
#include <QSize>
#include <QString>

namespace paukfix {

// Reads the pictures of a card not much larger than they are shown, as a large one takes time, and again
// where more of one can be seen. Sizes are pixels of the screen.
class Kartenbilder
{
public:
    // From here on pictures are those of this card file and program.
    void SetOrte(const QString &karteiPfad, const QString &programmPfad);

    // The picture that a card names, for a place; as BildLaden.
    QImage Laden(const QString &name, const QSize &platz, Meldungen &meldungen);

    // Was read elsewhere, whole.
    void Gelesen(const QString &name) { Merken(name, {}); }

    // The last one for a larger place; null where what was read is enough, or where it can be read no more.
    QImage Groesser(const QSize &platz);

private:
    void Merken(const QString &name, const QSize &platz);

    QString karteiPfad_, programmPfad_;
    QString name_;
    QSize platz_; // that it was read for; empty for all of it
};

} // namespace paukfix
