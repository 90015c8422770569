// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AlleNull.h"

#include "NachNeu.h"

AlleNull::AlleNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("AlleNull"),
                      QStringLiteral("Alle Karten nach Fach Neu"),
                      QStringLiteral("Alle Karten nach Fach Neu"), parent)
{
    Erklaeren({QStringLiteral("Durch diese Funktion werden alle Karten wieder in das Fach Neu einsortiert."),
               QStringLiteral("Hinweis: Diese Funktion kann n i c h t rückgängig gemacht werden !")});
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AlleNull::cmdOK_Click()
{
    if (Dienst().meldungen.Fragen(
            QStringLiteral("Sind sie sicher, daß sie alle Karten zurücksetzen möchten ?"),
            Meldungen::Antwort::Nein) != Meldungen::Antwort::Ja)
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = AlleNachNeu(bank); });
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(QStringLiteral("Alles zurückgesetzt"));
    if (ausgang == Ausgang::Gelungen || !Store().IsOpen())
        accept();
}
