// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ErlNull.h"

#include "NachNeu.h"

namespace paukfix {

using namespace Qt::StringLiterals;

ErlNull::ErlNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"ErlNull"_s, u"Erledigte Karten nach Fach Neu"_s,
                      u"Erledigte Karten nach Fach Neu"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden erledigte Karten wieder in das Fach Neu einsortiert."_s,
               u"Hinweis: Wenn eine Karte alle Fächer durchlaufen hat, dann gilt sie als erledigt."_s});
    const int erledigt = Store().FachInfo[6].Anzahl;
    VorhabenZeigen(erledigt == 0 ? u"Es gibt keine erledigten Karten."_s
                                 : Kommen(erledigt) + u" nach Neu."_s);
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void ErlNull::cmdOK_Click()
{
    std::optional<int> anzahl;
    Ausfuehren([&](const Werkbank &bank) { anzahl = ErledigteNachNeu(bank); });
    if (anzahl)
        Dienst().meldungen.Zeigen(QString::number(*anzahl) + u"Karten zurückgesetzt"_s);
    if (anzahl || !Store().IsOpen())
        accept();
}

} // namespace paukfix
