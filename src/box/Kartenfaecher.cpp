// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenfaecher.h"

#include "KastenFarben.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace paukfix {

namespace {

// Twips.
constexpr double Neigung = 62; // from one card to the next
constexpr double Teilung = 24; // from one upright edge to the next, at least 3 pixels
constexpr double Schmal = 320; // a compartment in which a fan would leave the front face no room

constexpr double Spiel = 0.035; // by which cards differ in height

constexpr int AlleEinzeln = 13; // so many cards are all drawn
constexpr int Gelehnt = 6;      // so many lean in front of the upright ones, at least

// A pattern that looks shuffled and is the same each time, so that the cards stand still.
unsigned Streuung(std::size_t i)
{
    unsigned wert = static_cast<unsigned>(i) * 2654435761u + 0x9E3779B9u;
    wert ^= wert >> 15;
    wert *= 2246822519u;
    return wert ^ (wert >> 13);
}

QColor Kartenfarbe(std::size_t i)
{
    const unsigned streuung = Streuung(i) % 17;
    if (streuung < 2)
        return KastenFarben::Rosa;
    if (streuung < 5)
        return KastenFarben::Himmel;
    return KastenFarben::Papier;
}

QColor Ueber(const QColor &grund, const QColor &farbe, double anteil)
{
    const auto misch = [&](int unten, int oben) {
        return static_cast<int>(std::lround(unten + (oben - unten) * anteil));
    };
    return {misch(grund.red(), farbe.red()), misch(grund.green(), farbe.green()),
            misch(grund.blue(), farbe.blue())};
}

} // namespace

Kartenfaecher::Kartenfaecher(int anzahl, const Platz &platz) : platz_(platz)
{
    if (anzahl < 1)
        return;
    const double zwip = platz.pixelJeTwip;
    const int gelehnt = anzahl <= AlleEinzeln ? anzahl : std::max(Gelehnt, 2 * AlleEinzeln - anzahl);
    const double teilung = std::max(Teilung * zwip, 3.0);
    const int stehend =
        std::clamp(static_cast<int>(std::lround(platz.gefuellt / teilung)), 0, anzahl - gelehnt);
    const int gezeigt = stehend + gelehnt;
    const double schmal = platz.innen.width() < Schmal * zwip ? 2.0 / 3 : 1;
    const double frei = std::max(0.0, platz.innen.width() - platz.gefuellt) * schmal;
    const double schritt = std::min(Neigung * zwip, frei / gelehnt);
    const double dicke = std::clamp(platz.gefuellt / gezeigt, 1.0, 3.5 * std::max(1.0, teilung / 3));
    // The front one is seen also where the cards fill their compartment.
    const double vorn = std::max(dicke, std::min(3.0, platz.gefuellt));
    const double abstand = gezeigt > 1 ? (platz.gefuellt - vorn) / (gezeigt - 1) : 0;
    karten_.reserve(static_cast<std::size_t>(gezeigt));
    for (int i = 0; i < gezeigt; ++i) {
        const double streuung = (Streuung(platz.saat + static_cast<std::size_t>(i)) >> 8 & 0xFF) / 255.0;
        karten_.push_back({.fuss = platz.innen.left() + abstand * i,
                           .dicke = i + 1 == gezeigt ? vorn : dicke,
                           .neigung = schritt * std::max(0, i + 1 - stehend),
                           .hoehe = platz.innen.height() * (1 - Spiel * streuung),
                           .steht = i < stehend});
    }
}

QPointF Kartenfaecher::Vorderste() const
{
    const Karte &vorn = karten_.back();
    return {vorn.fuss + vorn.neigung, platz_.innen.bottom() - vorn.hoehe};
}

void Kartenfaecher::Malen(QPainter &maler) const
{
    const double boden = platz_.innen.bottom();
    const QPointF tiefe = platz_.tiefe;
    for (std::size_t i = 0; i < karten_.size(); ++i) {
        const Karte &karte = karten_[i];
        const bool vorderste = i + 1 == karten_.size();
        const QColor farbe = vorderste ? KastenFarben::Honig : Kartenfarbe(platz_.saat + i);
        const QPen aussen(Ueber(farbe, KastenFarben::Tinte, 0.63), 1);
        const QPen innen(Ueber(farbe, KastenFarben::Tinte, 0.2), 1);
        const double oben = boden - karte.hoehe;
        const QPointF fussLinks(karte.fuss, boden), fussRechts(karte.fuss + karte.dicke, boden);
        const QPointF kopfLinks(karte.fuss + karte.neigung, oben),
            kopfRechts = kopfLinks + QPointF(karte.dicke, 0);

        // The face. Of an upright card only what stands out above the next one is seen.
        maler.setBrush(farbe);
        maler.setPen(innen);
        const double unten = karte.steht ? oben + 0.08 * karte.hoehe : boden;
        const QPointF blattUnten = karte.steht ? QPointF(fussRechts.x(), unten) : fussRechts;
        const std::array<QPointF, 4> blatt{kopfRechts, kopfRechts + tiefe, blattUnten + tiefe, blattUnten};
        maler.drawConvexPolygon(blatt.data(), 4);
        if (!karte.steht) {
            // Its rule and, on the front one, two lines of writing.
            const auto zeile = [&](double von, double bis, double hinab) {
                const QPointF links = kopfRechts + (fussRechts - kopfRechts) * hinab;
                maler.drawLine(links + tiefe * von, links + tiefe * bis);
            };
            maler.setPen(QPen(KastenFarben::Koralle, 1.8));
            zeile(0.15, 0.85, 0.11);
            if (vorderste) {
                maler.setPen(QPen(Ueber(farbe, KastenFarben::Tinte, 0.55), 1.6));
                zeile(0.15, 0.72, 0.22);
                zeile(0.15, 0.5, 0.29);
            }
        }
        // Near edge and upper edge.
        maler.setBrush(vorderste ? KastenFarben::HonigDunkel : Ueber(farbe, KastenFarben::Tinte, 0.04));
        maler.setPen(innen);
        const std::array<QPointF, 4> kante{kopfLinks, kopfRechts, fussRechts, fussLinks};
        maler.drawConvexPolygon(kante.data(), 4);
        maler.setBrush(farbe);
        maler.setPen(aussen);
        const std::array<QPointF, 4> kopf{kopfLinks, kopfRechts, kopfRechts + tiefe, kopfLinks + tiefe};
        maler.drawConvexPolygon(kopf.data(), 4);
        if (i == 0)
            maler.drawLine(kopfLinks, fussLinks);
        if (vorderste)
            maler.drawPolyline(
                std::array<QPointF, 3>{kopfRechts + tiefe, fussRechts + tiefe, fussRechts}.data(), 3);
    }
}

void Kartenfaecher::LeerMalen(QPainter &maler, double hoehe) const
{
    const QPointF fuss(platz_.innen.left() + 2, platz_.innen.bottom() - 3);
    const QPointF kopf(fuss.x() + 0.1 * Neigung * platz_.pixelJeTwip + 2, fuss.y() - hoehe);
    maler.setBrush(Qt::NoBrush);
    QPen strich(KastenFarben::Himmel, 1.4, Qt::CustomDashLine);
    strich.setDashPattern({3, 3});
    maler.setPen(strich);
    const std::array<QPointF, 4> blatt{kopf, kopf + platz_.tiefe, fuss + platz_.tiefe, fuss};
    maler.drawConvexPolygon(blatt.data(), 4);
}

} // namespace paukfix
