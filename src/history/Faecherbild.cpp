// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Diagramm.h"
#include "Hausfarben.h"

#include <QPainter>

#include <algorithm>
#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The cards of `fach` and of those that lie below it in the picture.
int BisFach(const Kartenzahlen &karten, std::size_t fach)
{
    return std::accumulate(karten.begin() + static_cast<std::ptrdiff_t>(fach), karten.end(), 0);
}

} // namespace

QString Faecherbild::Titel() const
{
    return u"Inhalt der Fächer"_s;
}

QString Faecherbild::InWorten() const
{
    return FaecherInWorten(Werte());
}

QString Faecherbild::TagInWorten(int tag) const
{
    const auto &stand = Werte().tage[static_cast<std::size_t>(tag)];
    if (!stand)
        return {};
    QStringList worte;
    for (std::size_t fach = 0; fach < stand->karten.size(); ++fach)
        worte << u"%1: %2"_s.arg(Fachname(fach)).arg(stand->karten[fach]);
    return u"%1\n%2"_s.arg(Tagname(stand->tag, Werte().heute), worte.join('\n'_L1));
}

void Faecherbild::Malen(QPainter &maler, const QRectF &feld) const
{
    const Hausfarben &farben = Farbsatz();
    const auto &tage = Werte().tage;
    int meiste = 0;
    for (const auto &stand : tage)
        if (stand)
            meiste = std::max(meiste, BisFach(stand->karten, 0));
    if (meiste == 0) {
        maler.setPen(farben.leiseTinte);
        maler.drawText(feld, Qt::AlignCenter | Qt::TextWordWrap, u"Die Kartei hat keine Karten."_s);
        return;
    }
    const Wertachse achse = Wertachse::Fuer(meiste, 0, MeisteMarken(feld));
    SkalaMalen(maler, feld, achse);

    // Once known, the cards of a box are known for every day: one piece from there to today.
    const auto bekannt = std::ranges::find_if(tage, [](const auto &stand) { return stand.has_value(); });
    const int erster = static_cast<int>(bekannt - tage.begin());
    const auto kante = [&](std::size_t fach) { // the upper edge of a compartment's layer
        QPolygonF punkte;
        punkte << QPointF(Tage().X(erster, feld), achse.Y(BisFach((*bekannt)->karten, fach), feld));
        for (auto stand = bekannt; stand != tage.end(); ++stand)
            punkte << QPointF(Tage().X(static_cast<double>(stand - tage.begin()) + 0.5, feld),
                              achse.Y(BisFach((*stand)->karten, fach), feld));
        punkte << QPointF(feld.right(), punkte.last().y());
        return punkte;
    };
    std::array<QPolygonF, FachAnzahl> kanten;
    for (std::size_t fach = 0; fach < kanten.size(); ++fach)
        kanten[fach] = kante(fach);
    for (std::size_t fach = 0; fach < kanten.size(); ++fach) {
        QPolygonF schicht = kanten[fach];
        if (fach == FachErledigt) {
            schicht << feld.bottomRight() << QPointF(schicht.first().x(), feld.bottom());
        } else {
            std::reverse_copy(kanten[fach + 1].begin(), kanten[fach + 1].end(), std::back_inserter(schicht));
        }
        maler.setPen(Qt::NoPen);
        maler.setBrush(farben.faecher[fach]);
        maler.drawPolygon(schicht);
    }
    maler.setPen(QPen(farben.karte, 1.5));
    for (std::size_t fach = 1; fach < kanten.size(); ++fach)
        maler.drawPolyline(kanten[fach]);
    NamenMalen(maler, feld, achse);
}

// Each beside its layer, pushed apart where layers are thin.
void Faecherbild::NamenMalen(QPainter &maler, const QRectF &feld, const Wertachse &achse) const
{
    const Hausfarben &farben = Farbsatz();
    const Kartenzahlen &jetzt = Werte().jetzt;
    const double zeile = std::min(QFontMetricsF(maler.font()).height(), feld.height() / (FachAnzahl - 1));
    std::array<double, FachAnzahl> y{};
    double frei = feld.top();
    for (std::size_t fach = 0; fach < y.size(); ++fach) {
        const double mitte = achse.Y(BisFach(jetzt, fach) - jetzt[fach] / 2.0, feld);
        y[fach] = std::max(mitte, frei);
        frei = y[fach] + zeile;
    }
    double grenze = feld.bottom();
    for (std::size_t fach = y.size(); fach-- > 0;) {
        y[fach] = std::min(y[fach], grenze);
        grenze = y[fach] - zeile;
    }
    for (std::size_t fach = 0; fach < y.size(); ++fach) {
        constexpr double Farbe = 8;
        maler.setPen(Qt::NoPen);
        maler.setBrush(farben.faecher[fach]);
        maler.drawRoundedRect(QRectF(feld.right() + 6, y[fach] - Farbe / 2, Farbe, Farbe), 2, 2);
        NameMalen(maler, feld.adjusted(0, 0, Farbe + 2, 0), y[fach],
                  u"%1: %2"_s.arg(Fachname(fach)).arg(jetzt[fach]), farben.tinte);
    }
}

} // namespace paukfix
