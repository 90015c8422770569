// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckausgabe.h"

#include "Mediendatei.h"

#include <QFileInfo>

namespace paukfix {

void KartenrestMelden(const CardRecord &karte, Deckbericht &bericht)
{
    const bool bild = !karte.Picture_1_Name.isEmpty() || !karte.Picture_2_Name.isEmpty();
    if (bild && (karte.Picturewidth > 0 || karte.Pictureheight > 0))
        bericht.Melden(Deckrest::Bildlage, karte.Frage_Klartext);
    for (const QString *name : {&karte.Picture_3_Name, &karte.Picture_8_Name})
        if (!name->isEmpty())
            bericht.Melden(Deckrest::FalschMedium, *name);
}

QString Medienpfad(const Deckausgabe &deck, const QString &name, Deckbericht &bericht)
{
    if (name.isEmpty())
        return {};
    const QFileInfo datei(Mediendatei(deck.medien, name));
    // A link may lead out of the directory.
    if (datei.isFile() && !datei.isSymLink())
        return datei.absoluteFilePath();
    bericht.Melden(Deckrest::MediumFehlt, name);
    return {};
}

} // namespace paukfix
