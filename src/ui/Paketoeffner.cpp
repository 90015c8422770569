// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Paketoeffner.h"

#include "Auspacken.h"
#include "KarteiOeffner.h"

#include <QDir>
#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

QString KarteiAusPaket(const QString &paket, KarteiOeffner &oeffner, Meldungen &meldungen)
{
    try {
        if (QString schon = SchonAusgepackt(paket); !schon.isEmpty()) {
            constexpr qsizetype Oeffnen = 0;
            constexpr qsizetype Abbruch = 2;
            const qsizetype wahl =
                meldungen.Waehlen(u"Das Paket „%1“ wurde schon ausgepackt, in den Ordner „%2“. Soll die "
                                  u"Kartei dort geöffnet werden, "
                                  u"mit allem, was seither gelernt wurde?"_s.arg(
                                      QFileInfo(paket).fileName(), QFileInfo(schon).dir().dirName()),
                                  {u"&Öffnen"_s, u"&Neu auspacken"_s, u"&Abbrechen"_s}, Abbruch);
            if (wahl == Oeffnen)
                return schon;
            if (wahl == Abbruch)
                return {};
        }
        const Ausgepackt ausgepackt = Auspacken(
            paket, oeffner.WartenZeigen(u"Das Paket wird ausgepackt."_s,
                                        u"Das Auspacken wurde abgebrochen; es liegt nichts Neues da."_s));
        if (!ausgepackt.bericht.isEmpty())
            meldungen.Bericht(u"Paket"_s, ausgepackt.bericht);
        return ausgepackt.kartei;
    } catch (const std::exception &fehler) {
        meldungen.Zeigen(ErrorText(fehler));
        return {};
    }
}

} // namespace paukfix
