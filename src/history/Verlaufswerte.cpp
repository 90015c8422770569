// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Verlaufswerte.h"

#include <QLocale>

#include <algorithm>
#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString ImZeitraum(const Verlaufswerte &werte)
{
    switch (werte.zeitraum) {
    case Zeitraum::Tage30:
        return u"in 30 Tagen"_s;
    case Zeitraum::Wochen12:
        return u"in 12 Wochen"_s;
    case Zeitraum::Alles:
        break;
    }
    return u"seit dem %1"_s.arg(Tagname(werte.von, werte.heute));
}

QString PrognoseInWorten(const Verlaufswerte &werte)
{
    constexpr int OhneJahr = 300; // days that lie so near that their year need not be said
    const QLocale deutsch(QLocale::German);
    switch (werte.prognose.art) {
    case Prognose::Art::Am:
        return u"erledigt; alle etwa am %1"_s.arg(deutsch.toString(
            werte.prognose.tag,
            werte.heute.daysTo(werte.prognose.tag) < OhneJahr ? u"d. MMMM"_s : u"d. MMMM yyyy"_s));
    case Prognose::Art::Fern:
        return u"erledigt; alle in mehr als 5 Jahren"_s;
    case Prognose::Art::Unbekannt:
        return u"erledigt; Ende noch nicht abzusehen"_s;
    case Prognose::Art::Fertig:
    case Prognose::Art::OhneKarten:
        break;
    }
    return u"erledigt"_s;
}

} // namespace

Verlaufswerte Auswerten(const std::vector<Tagesstand> &tage, Zeitraum zeitraum, const QDate &heute)
{
    const std::vector<Tagesstand> glaubhaft = Glaubhaft(tage, heute);
    Verlaufswerte werte;
    werte.zeitraum = zeitraum;
    werte.heute = heute;
    werte.von = Beginn(zeitraum, glaubhaft, heute);
    werte.tage = Lueckenlos(glaubhaft, werte.von, heute);
    std::ranges::copy_if(glaubhaft, std::back_inserter(werte.bekannt),
                         [&](const Tagesstand &stand) { return stand.tag >= werte.von; });
    for (const Tagesstand &stand : werte.bekannt) {
        werte.richtig += stand.richtig;
        werte.falsch += stand.falsch;
    }
    werte.inFolge = TageInFolge(glaubhaft, heute);
    if (!glaubhaft.empty())
        werte.jetzt = glaubhaft.back().karten;
    werte.prognose = Vorhersagen(glaubhaft, heute);
    return werte;
}

Kennzahltext RichtigText(const Verlaufswerte &werte)
{
    return {QString::number(werte.richtig), u"richtig "_s + ImZeitraum(werte)};
}

Kennzahltext FalschText(const Verlaufswerte &werte)
{
    return {QString::number(werte.falsch), u"falsch "_s + ImZeitraum(werte)};
}

Kennzahltext FolgeText(const Verlaufswerte &werte)
{
    return {werte.inFolge == 1 ? u"1 Tag"_s : u"%1 Tage"_s.arg(werte.inFolge), u"in Folge gelernt"_s};
}

Kennzahltext ErledigtText(const Verlaufswerte &werte)
{
    const int alle = std::accumulate(werte.jetzt.begin(), werte.jetzt.end(), 0);
    return {u"%1 von %2"_s.arg(werte.jetzt[FachErledigt]).arg(alle), PrognoseInWorten(werte)};
}

QString Fachname(std::size_t fach)
{
    if (fach == FachNeu)
        return u"Neu"_s;
    return fach == FachErledigt ? u"erledigt"_s : u"Fach %1"_s.arg(fach);
}

QString Tagname(const QDate &tag, const QDate &heute)
{
    return QLocale(QLocale::German)
        .toString(tag, tag.year() == heute.year() ? u"d. MMM"_s : u"d. MMM yyyy"_s);
}

QString AntwortenInWorten(const Verlaufswerte &werte)
{
    QStringList worte{
        u"%1 richtig und %2 falsch %3"_s.arg(werte.richtig).arg(werte.falsch).arg(ImZeitraum(werte))};
    if (!werte.bekannt.empty() && werte.bekannt.back().tag == werte.heute)
        worte << u"heute %1 richtig und %2 falsch"_s.arg(werte.bekannt.back().richtig)
                     .arg(werte.bekannt.back().falsch);
    const auto meiste = std::ranges::max_element(
        werte.bekannt, {}, [](const Tagesstand &stand) { return stand.richtig + stand.falsch; });
    if (meiste != werte.bekannt.end() && meiste->Gelernt())
        worte << u"am meisten am %1: %2 richtig und %3 falsch"_s.arg(Tagname(meiste->tag, werte.heute))
                     .arg(meiste->richtig)
                     .arg(meiste->falsch);
    return worte.join(u"; "_s) + u". Alle Tage nennt die Tabelle."_s;
}

QString FaecherInWorten(const Verlaufswerte &werte)
{
    const auto inhalt = [](const Kartenzahlen &karten) {
        QStringList worte;
        for (std::size_t fach = 0; fach < karten.size(); ++fach)
            worte << u"%1: %2"_s.arg(Fachname(fach)).arg(karten[fach]);
        return worte.join(u", "_s);
    };
    QString worte = u"Heute "_s + inhalt(werte.jetzt);
    if (werte.bekannt.size() > 1)
        worte += u"; am %1 "_s.arg(Tagname(werte.bekannt.front().tag, werte.heute)) +
                 inhalt(werte.bekannt.front().karten);
    return worte + u". Alle Tage nennt die Tabelle."_s;
}

QStringList Tabellenkopf()
{
    QStringList kopf{u"Tag"_s, u"richtig"_s, u"falsch"_s};
    for (std::size_t fach = 0; fach < FachAnzahl; ++fach)
        kopf << Fachname(fach);
    return kopf;
}

QStringList Tabellenzeile(const Tagesstand &stand)
{
    QStringList zeile{stand.tag.toString(u"dd.MM.yyyy"_s), QString::number(stand.richtig),
                      QString::number(stand.falsch)};
    for (const int karten : stand.karten)
        zeile << QString::number(karten);
    return zeile;
}

QString TabelleAlsText(const Verlaufswerte &werte)
{
    QString text = Tabellenkopf().join('\t'_L1) + '\n'_L1;
    for (const Tagesstand &stand : werte.bekannt)
        text += Tabellenzeile(stand).join('\t'_L1) + '\n'_L1;
    return text;
}

} // namespace paukfix
