// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorauslese.h"

#include "Bild.h"
#include "Mediendatei.h"

#include <QFileInfo>

#include <exception>

namespace paukfix {

void Vorauslese::Lesen(CardStore &store, int fach)
{
    Verwerfen();
    try {
        const std::optional<Abfragekarte> erste = KarteVorauslesen(store.Karten(), fach);
        if (!erste)
            return;
        karte_ = *erste;
        gelesen_ = true;
        if (const QString &name = karte_.Medium[1]; !BlosserName(name).isEmpty()) {
            bilddatei_ = Mediendatei(store.KarteiPfad, name);
            geaendert_ = QFileInfo(bilddatei_).lastModified();
            bild_ = BildLesen(bilddatei_);
        }
    } catch (const std::exception &) {
        bild_ = {};
    }
}

bool Vorauslese::Gilt(const Abfragekarte &karte) const
{
    return gelesen_ && karte_ == karte &&
           (bild_.isNull() || QFileInfo(bilddatei_).lastModified() == geaendert_);
}

} // namespace paukfix
