// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ausduennung.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace paukfix {

namespace {

constexpr int Letzte = 10;
constexpr int Tage = 14;
constexpr int Wochen = 26;
constexpr int TeilDerPlatte = 10;

// Weeks begin on a Monday; counted from a day far back, so that a new year changes nothing.
qint64 Woche(const QDate &tag)
{
    constexpr qint64 JulianischerMontag = 0; // Julian day 0 was a Monday
    return (tag.toJulianDay() - JulianischerMontag) / 7;
}

} // namespace

Sicherungsliste Entbehrlich(const Sicherungsliste &liste, const QDate &heute, qint64 alle, qint64 frei)
{
    Sicherungsliste gehen;
    Sicherungsliste bleiben;
    QSet<qint64> tage;
    QSet<qint64> wochen;
    for (const Sicherung &sicherung : liste) {
        const QDate tag = sicherung.zeit.date();
        bool bleibt = bleiben.size() < Letzte;
        if (tag.daysTo(heute) < Tage && !tage.contains(tag.toJulianDay()))
            bleibt = true;
        if (Woche(heute) - Woche(tag) < Wochen && !wochen.contains(Woche(tag)))
            bleibt = true;
        tage.insert(tag.toJulianDay());
        wochen.insert(Woche(tag));
        (bleibt ? bleiben : gehen).append(sicherung);
        if (!bleibt)
            alle -= sicherung.groesse;
    }
    // What is deleted becomes free.
    const bool bekannt = frei >= 0;
    const auto zuViel = [&] { return bekannt && alle > frei / TeilDerPlatte; };
    for (const Sicherung &sicherung : std::as_const(gehen))
        frei += sicherung.groesse;
    while (bleiben.size() > 1 && zuViel()) {
        const Sicherung aelteste = bleiben.takeLast();
        alle -= aelteste.groesse;
        frei += aelteste.groesse;
        gehen.append(aelteste);
    }
    std::sort(gehen.begin(), gehen.end(),
              [](const Sicherung &eine, const Sicherung &andere) { return eine.zeit < andere.zeit; });
    return gehen;
}

} // namespace paukfix
