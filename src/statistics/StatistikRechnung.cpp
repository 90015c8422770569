// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StatistikRechnung.h"

namespace {

// The short form leaves the seconds out: the long form's time of day, without the name of its zone.
QString DatumUhrzeit(const QDateTime &zeit, const QLocale &sprache)
{
    QString uhrzeit = sprache.timeFormat(QLocale::LongFormat);
    uhrzeit.remove(QLatin1Char('t'));
    return sprache.toString(zeit.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           sprache.toString(zeit.time(), uhrzeit.trimmed());
}

} // namespace

StatistikWerte StatistikLesen(const CardStore &kartei, const QDateTime &jetzt, const QLocale &sprache)
{
    StatistikWerte werte;
    werte.DatZeit = DatumUhrzeit(jetzt, sprache);
    // Before a card file has been opened, no session has begun.
    werte.Beginn = kartei.Beginn.isValid() ? DatumUhrzeit(kartei.Beginn, sprache) : QStringLiteral("\u2013");
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
