// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ankreuztyp.h"

#include "HtmlStil.h"

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {
constexpr int Antworten = 5;
}

const QStringList &Tippfeldnamen()
{
    static const QStringList namen{u"Frage"_s, u"Antwort"_s, u"Thema"_s};
    return namen;
}

std::optional<QString> EigenesThema(const QStringList &felder, const std::vector<QString> &werte)
{
    if ((felder != Tippfeldnamen() && felder != Ankreuzfeldnamen()) ||
        werte.size() != static_cast<std::size_t>(felder.size()))
        return std::nullopt;
    return HtmlAttribut(werte.back());
}

const QStringList &Ankreuzfeldnamen()
{
    static const QStringList namen{u"Frage"_s,     u"Antwort 1"_s, u"Antwort 2"_s,
                                   u"Antwort 3"_s, u"Antwort 4"_s, u"Antwort 5"_s,
                                   u"Richtig"_s,   u"Lösung"_s,    u"Thema"_s};
    return namen;
}

bool IstAnkreuztyp(const QStringList &felder)
{
    const QStringList &namen = Ankreuzfeldnamen();
    return std::all_of(namen.begin(), namen.end(),
                       [&](const QString &name) { return felder.contains(name); });
}

Ankreuzfelder AnkreuzfelderLesen(const QStringList &felder, const std::vector<QString> &werte)
{
    const auto wert = [&](const QString &name) {
        const auto platz = static_cast<std::size_t>(felder.indexOf(name));
        return platz < werte.size() ? werte[platz] : QString();
    };
    Ankreuzfelder gelesen;
    gelesen.frage = wert(u"Frage"_s);
    gelesen.medien = wert(u"Lösung"_s);
    const QStringList richtige = wert(u"Richtig"_s).split(u' ', Qt::SkipEmptyParts);
    for (int i = 1; i <= Antworten; ++i)
        gelesen.antworten.emplace_back(wert(u"Antwort %1"_s.arg(i)), richtige.contains(QString::number(i)));
    return gelesen;
}

} // namespace paukfix
