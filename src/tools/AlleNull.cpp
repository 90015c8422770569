// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AlleNull.h"

#include "NachNeu.h"

#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

AlleNull::AlleNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"AlleNull"_s, u"Alle Karten nach Fach Neu"_s,
                      u"Alle Karten nach Fach Neu"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden alle Karten wieder in das Fach Neu einsortiert."_s,
               u"Hinweis: Diese Funktion kann n i c h t rückgängig gemacht werden !"_s});
    const int karten = std::accumulate(Store().FachInfo.begin(), Store().FachInfo.end(), 0,
                                       [](int summe, const Fach &fach) { return summe + fach.Anzahl; });
    VorhabenZeigen(Kommen(karten) + u" nach Neu, "_s +
                   (karten == Store().FachInfo[0].Anzahl
                        ? u"wo sie schon sind."_s
                        : u"%1 davon aus anderen Fächern."_s.arg(karten - Store().FachInfo[0].Anzahl)));
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AlleNull::cmdOK_Click()
{
    if (Dienst().meldungen.Fragen(u"Sind sie sicher, daß sie alle Karten zurücksetzen möchten ?"_s,
                                  Meldungen::Antwort::Nein) != Meldungen::Antwort::Ja)
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = AlleNachNeu(bank); });
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(u"Alles zurückgesetzt"_s);
    if (ausgang == Ausgang::Gelungen || !Store().IsOpen())
        accept();
}

} // namespace paukfix
