// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ErlNull.h"

#include "NachNeu.h"

ErlNull::ErlNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("ErlNull"),
                      QStringLiteral("Erledigte Karten nach Fach Neu"),
                      QStringLiteral("Erledigte Karten nach Fach Neu"), parent)
{
    Erklaeren(
        {QStringLiteral("Durch diese Funktion werden erledigte Karten wieder in das Fach Neu einsortiert."),
         QStringLiteral(
             "Hinweis: Wenn eine Karte alle Fächer durchlaufen hat, dann gilt sie als erledigt.")});
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void ErlNull::cmdOK_Click()
{
    std::optional<int> anzahl;
    Ausfuehren([&](const Werkbank &bank) { anzahl = ErledigteNachNeu(bank); });
    if (anzahl)
        Dienst().meldungen.Zeigen(QString::number(*anzahl) + QStringLiteral("Karten zurückgesetzt"));
    if (anzahl || !Store().IsOpen())
        accept();
}
