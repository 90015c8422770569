// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Prognose.h"
#include "Tagesrechnung.h"

#include <QString>
#include <QStringList>

namespace paukfix {

// What the history's window shows of a period: numbers, and the words for them.
struct Verlaufswerte
{
    Zeitraum zeitraum = Zeitraum::Tage30;
    QDate von, heute;
    std::vector<std::optional<Tagesstand>> tage; // one for each day from `von` to `heute`
    std::vector<Tagesstand> bekannt;             // the days of the period that the history knows
    int richtig = 0, falsch = 0;                 // answers of the period
    int inFolge = 0;                             // days
    Kartenzahlen jetzt{};
    Prognose prognose;
};

// `tage` in the order of their dates; what is to come of them is left out.
Verlaufswerte Auswerten(const std::vector<Tagesstand> &tage, Zeitraum zeitraum, const QDate &heute);

// A number of the window, large, and the words beside it; together they are a sentence.
struct Kennzahltext
{
    QString zahl, worte;
};

Kennzahltext RichtigText(const Verlaufswerte &werte);
Kennzahltext FalschText(const Verlaufswerte &werte);
Kennzahltext FolgeText(const Verlaufswerte &werte);
Kennzahltext ErledigtText(const Verlaufswerte &werte);

// "Neu", "Fach 1", "erledigt".
QString Fachname(std::size_t fach);
// "21. Nov.", with the year where it is another one than today's.
QString Tagname(const QDate &tag, const QDate &heute);

// What the pictures show, for those who do not see them.
QString AntwortenInWorten(const Verlaufswerte &werte);
QString FaecherInWorten(const Verlaufswerte &werte);

// The table's head and the cells of a day.
QStringList Tabellenkopf();
QStringList Tabellenzeile(const Tagesstand &stand);
// Head and days with tabs between the cells and a line for each, as spreadsheets take it.
QString TabelleAlsText(const Verlaufswerte &werte);

} // namespace paukfix
