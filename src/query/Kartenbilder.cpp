// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenbilder.h"

#include "Bild.h"

namespace paukfix {

namespace {

constexpr int Vorrat = 2; // times as large as needed: it is sharp, and stays so in a somewhat larger window

} // namespace

void Kartenbilder::SetOrte(const QString &karteiPfad, const QString &programmPfad)
{
    karteiPfad_ = karteiPfad;
    programmPfad_ = programmPfad;
    Merken({}, {});
}

QImage Kartenbilder::Laden(const QString &name, const QSize &platz, Meldungen &meldungen)
{
    const QSize raum = platz * Vorrat;
    const QImage bild = BildLaden(name, karteiPfad_, programmPfad_, meldungen, raum);
    Merken(bild.isNull() ? QString() : name, raum);
    return bild;
}

QImage Kartenbilder::Groesser(const QSize &platz)
{
    const bool genug = platz.width() <= platz_.width() && platz.height() <= platz_.height();
    if (name_.isEmpty() || platz_.isEmpty() || genug)
        return {};
    platz_ = platz * Vorrat;
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
