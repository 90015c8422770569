// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StatistikRechnung.h"

StatistikWerte StatistikLesen(const CardStore &kartei, const QDateTime &jetzt, const QLocale &sprache)
{
    StatistikWerte werte;
    werte.DatZeit = sprache.toString(jetzt, QLocale::ShortFormat);
    // Before a card file has been opened, no session has begun.
    werte.Beginn = kartei.Beginn.isValid() ? sprache.toString(kartei.Beginn, QLocale::ShortFormat)
                                           : QStringLiteral("\u2013");
    for (std::size_t i = 0; i < FachAnzahl; ++i)
        werte.Fach[i] = {kartei.BegAnz[i], kartei.FachInfo[i].Anzahl};
    werte.richtig = kartei.RichtigZaehler;
    werte.falsch = kartei.FalschZaehler;
    werte.gesamt = werte.richtig + werte.falsch;
    return werte;
}

QString AenderungsText(int aenderung)
{
    return (aenderung > 0 ? QStringLiteral("+") : QString()) + QString::number(aenderung);
}
