// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StatistikRechnung.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The short form leaves the seconds out: the long form's time of day, without the name of its zone.
QString DatumUhrzeit(const QDateTime &zeit, const QLocale &sprache)
{
    QString uhrzeit = sprache.timeFormat(QLocale::LongFormat);
    uhrzeit.remove('t'_L1);
    return sprache.toString(zeit.date(), QLocale::ShortFormat) + ' '_L1 +
           sprache.toString(zeit.time(), uhrzeit.trimmed());
}

} // namespace

StatistikWerte StatistikLesen(const CardStore &kartei, const QDateTime &jetzt, const QLocale &sprache)
{
    const Sitzung &sitzung = kartei.sitzung;
    StatistikWerte werte;
    werte.DatZeit = DatumUhrzeit(jetzt, sprache);
    // Before a card file has been opened, no session has begun.
    werte.Beginn = sitzung.Beginn().isValid() ? DatumUhrzeit(sitzung.Beginn(), sprache) : u"\u2013"_s;
    for (std::size_t i = 0; i < FachAnzahl; ++i)
        werte.Fach[i] = {sitzung.BegAnz()[i], kartei.FachInfo[i].Anzahl};
    werte.richtig = sitzung.RichtigZaehler();
    werte.falsch = sitzung.FalschZaehler();
    werte.gesamt = werte.richtig + werte.falsch;
    return werte;
}

QString AenderungsText(int aenderung)
{
    return (aenderung > 0 ? u"+"_s : QString()) + QString::number(aenderung);
}

} // namespace paukfix
