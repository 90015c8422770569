// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenAusText.h"

#include "FelderText.h"

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// As long as nobody has said which columns are meant, old files keep their rule: the rest is the topic.
std::size_t Hoechstens(const Aufbau &aufbau)
{
    constexpr std::size_t FrageAntwortThema = 3;
    return aufbau.form.anfuehrung || aufbau.spalten != Spalten() ? 0 : FrageAntwortThema;
}

// Cards part their lines by CR LF, spreadsheets theirs by LF.
QString MitCrLf(QString text)
{
    if (!text.contains(u'\n') && !text.contains(u'\r'))
        return text;
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\n', u"\r\n"_s);
}

} // namespace

Aufbau AufbauRaten(const QByteArray &datei, const Zeichensatz &zeichensatz,
                   const std::optional<Textform> &form)
{
    Aufbau aufbau{.zeichensatz = zeichensatz.isEmpty() ? ZeichensatzRaten(datei) : zeichensatz};
    const Textinhalt inhalt = TextLesen(datei, aufbau.zeichensatz);
    aufbau.form = form.value_or(TextformRaten(inhalt).value_or(Textform()));
    std::vector<Textfeld> erster;
    try {
        if (!TextSaetze(inhalt, aufbau.form).Naechster(erster))
            return aufbau;
    } catch (const StoreError &) { // told when it is read
        return aufbau;
    }
    aufbau.alleFelder = aufbau.form.anfuehrung && NenntAlleFelder(erster);
    if (aufbau.alleFelder) {
        aufbau.ueberschrift = true;
        return aufbau;
    }
    if (aufbau.form.anfuehrung || aufbau.form.trennzeichen == u',')
        if (const auto spalten = UeberschriftRaten(erster)) {
            aufbau.ueberschrift = true;
            aufbau.spalten = *spalten;
        }
    return aufbau;
}

KartenAusText::KartenAusText(Textinhalt inhalt, const Aufbau &aufbau)
    : aufbau_(aufbau),
      saetze_(std::move(inhalt), aufbau.form, Hoechstens(aufbau)),
      ueberschrift_(aufbau.ueberschrift)
{
}

bool KartenAusText::Naechste(SimpleCard &karte)
{
    const auto leer = [](const Textfeld &feld) { return feld.text.isEmpty(); };
    while (saetze_.Naechster(felder_)) {
        if (std::exchange(ueberschrift_, false))
            continue;
        if (aufbau_.form.anfuehrung && std::all_of(felder_.begin(), felder_.end(), leer))
            continue;
        if (felder_.size() == 1) {
            constexpr std::size_t Genannt = 100;
            if (!felder_[0].text.isEmpty() && ++andere_ > 0 && andereZeilen_.size() < Genannt)
                andereZeilen_.push_back(saetze_.Zeile());
            continue;
        }
        karte = {Text(aufbau_.spalten.frage), Text(aufbau_.spalten.antwort), Text(aufbau_.spalten.thema)};
        return true;
    }
    return false;
}

QString KartenAusText::Text(int spalte) const
{
    if (spalte < 0 || spalte >= static_cast<int>(felder_.size()))
        return {};
    const Textfeld &feld = felder_[static_cast<std::size_t>(spalte)];
    // Other systems write an umlaut as two characters. Parted before: a Greek question mark becomes a
    // semicolon.
    const QString text = feld.text.normalized(QString::NormalizationForm_C);
    return feld.inAnfuehrung ? MitCrLf(text) : text;
}

QString Zeilenliste(const std::vector<int> &zeilen, int anzahl)
{
    constexpr std::size_t Genannt = 5;
    const std::size_t gezeigt = std::min(zeilen.size(), Genannt);
    QString liste;
    for (std::size_t i = 0; i < gezeigt; ++i) {
        const bool letzte = i + 1 == gezeigt && static_cast<int>(gezeigt) == anzahl;
        if (i > 0)
            liste += letzte ? u" und "_s : u", "_s;
        liste += QString::number(zeilen[i]);
    }
    if (static_cast<int>(gezeigt) < anzahl)
        liste += u" und weitere"_s;
    return liste;
}

} // namespace paukfix
