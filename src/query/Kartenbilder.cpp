// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenbilder.h"

#include "Bild.h"

namespace paukfix {

void Kartenbilder::SetOrte(const QString &karteiPfad, const QString &programmPfad)
{
    karteiPfad_ = karteiPfad;
    programmPfad_ = programmPfad;
    Merken({}, {});
}

QImage Kartenbilder::Laden(const QString &name, const QSize &platz, Meldungen &meldungen)
{
    QImage bild = BildLaden(name, karteiPfad_, programmPfad_, meldungen, platz);
    Merken(bild.isNull() ? QString() : name, platz);
    return bild;
}

QImage Kartenbilder::Groesser(const QSize &platz)
{
    const bool genug = platz.width() <= platz_.width() && platz.height() <= platz_.height();
    if (name_.isEmpty() || platz_.isEmpty() || genug)
        return {};
    platz_ = platz;
    try {
        return BildSuchen(name_, karteiPfad_, programmPfad_, platz_);
    } catch (const StoreError &) {
        return {};
    }
}

void Kartenbilder::Merken(const QString &name, const QSize &platz)
{
    name_ = name;
    platz_ = platz;
}

} // namespace paukfix
