// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Medienzug.h"

#include "CardMedia.h"

namespace paukfix {

using namespace Qt::StringLiterals;

Medienzug::Medienzug(const Werkbank &bank, const QString &von, const DirectoryLock &ort,
                     const QString &kartei)
    : warten_(bank.oeffner.WartenZeigen(u"Bilder und Töne werden kopiert."_s,
                                        u"Das Kopieren wurde abgebrochen. Es bleibt alles, wie es war."_s)),
      takt_([this] {
          if (warten_)
              warten_(0, 0);
      }),
      beilagen_(ort, kartei, takt_),
      mitnahme_(von, beilagen_, takt_)
{
}

void Medienzug::Hinlegen()
{
    beilagen_.Hinlegen();
    warten_ = {};
}

void Medienzug::Abschliessen(CardRecordset &karten) noexcept
{
    try {
        warten_ = {};
        QSet<QString> genannt;
        for (const MediaName &medium : MediaNames(karten))
            genannt.insert(medium.name);
        beilagen_.Abschliessen(genannt);
    } catch (const std::exception &) {
        return;
    }
}

void MedienBerichten(Meldungen &meldungen, const QString &bericht)
{
    if (!bericht.isEmpty())
        meldungen.Bericht(u"Bilder und Töne"_s, bericht);
}

} // namespace paukfix
