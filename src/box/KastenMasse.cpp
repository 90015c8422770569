// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KastenMasse.h"

#include "Twips.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

// Twips. The trays' walls stand around the outer compartments; cards and die have the gap between the trays.
constexpr double Wand = 90;
constexpr double Rand = 300;
constexpr double SchildOben = 430, SchildHoehe = 450;
constexpr double KastenOben = 330;
constexpr double FachOben = 975;
constexpr double FachHoeheMin = 1700, FachHoeheSoll = 2650, FachHoeheMax = 3600;
constexpr double Fuss = 840;  // lower wall, which bears the counts
constexpr double Unten = 330; // below the trays, for their handles
constexpr double StapelLinks = 7860, StapelBreite = 1060;
constexpr double KarteBreite = 960, KarteHoehe = 1080;
constexpr double WuerfelLinks = 2400, WuerfelSeite = 720;
constexpr double Gesamtbreite = StapelLinks + StapelBreite + Rand;

constexpr double Gesamthoehe(double fachHoehe)
{
    return FachOben + fachHoehe + Fuss + Unten;
}

// The smallest scale at which the counts of the narrow compartments can be read.
constexpr double MassstabMin = 1.22 / TwipsJePixel;

} // namespace

KastenMasse::KastenMasse(QSize fenster, const FachTabelle &tabelle)
{
    massstab_ = std::min(fenster.width() / Gesamtbreite, fenster.height() / Gesamthoehe(FachHoeheMin));
    if (massstab_ <= 0)
        return;
    const double fachHoehe =
        std::clamp(fenster.height() / massstab_ - Gesamthoehe(0), FachHoeheMin, FachHoeheMax);
    ursprung_ = {(fenster.width() - Pixel(Gesamtbreite)) / 2,
                 (fenster.height() - Pixel(Gesamthoehe(fachHoehe))) / 2};
    wand = Pixel(Wand);

    const double kastenHoehe = FachOben - KastenOben + fachHoehe + Fuss;
    const double fussOben = FachOben + fachHoehe + 60;
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const double links = tabelle[i].Links;
        const double breite = tabelle[i].BreiteMax;
        // Names and counts may use the dividers too, half of each, and the trays' outer walls.
        const double zuvor =
            i > 1 ? (links + tabelle[i - 1].Links + tabelle[i - 1].BreiteMax) / 2 : links - Wand;
        const double danach = i > 0 && i + 1 < FachSichtbar ? (links + breite + tabelle[i + 1].Links) / 2
                                                            : links + breite + Wand;
        fach[i] = Rechteck(links, FachOben, breite, fachHoehe);
        schild[i] = Rechteck(zuvor, SchildOben, danach - zuvor, SchildHoehe);
        zaehler[i] = Rechteck(zuvor, fussOben, danach - zuvor, Fuss - 130);
    }
    const Fach &erstes = tabelle[1];
    const Fach &letztes = tabelle[FachSichtbar - 1];
    neu = Rechteck(tabelle[0].Links - Wand, KastenOben, tabelle[0].BreiteMax + 2 * Wand, kastenHoehe);
    lernen = Rechteck(erstes.Links - Wand, KastenOben,
                      letztes.Links + letztes.BreiteMax - erstes.Links + 2 * Wand, kastenHoehe);
    const double mitte = FachOben + fachHoehe / 2;
    stapel = Rechteck(StapelLinks, mitte - 620, StapelBreite, 1240);
    stapelSchild = Rechteck(StapelLinks, SchildOben, StapelBreite, SchildHoehe);
    stapelZaehler = Rechteck(StapelLinks, fussOben, StapelBreite, Fuss - 130);
    const double wuerfelOben = std::max(FachOben + fachHoehe - WuerfelSeite, FachOben + KarteHoehe + 120);
    wuerfel = Rechteck(WuerfelLinks, wuerfelOben, WuerfelSeite, WuerfelSeite);
    wuerfelTaste = Rechteck(WuerfelLinks - 100, std::max(fussOben, wuerfelOben + WuerfelSeite + 60),
                            WuerfelSeite + 200, 330);
    karte = Rechteck(0, 0, KarteBreite, KarteHoehe).size();
}

QRect KastenMasse::Karte(double links, double oben) const
{
    return {(ursprung_ + QPointF(Pixel(links), Pixel(oben))).toPoint(), karte};
}

QRect KastenMasse::Rechteck(double links, double oben, double breite, double hoehe) const
{
    // Both edges are rounded, so that neighbours meet in every size.
    const QPoint ecke = (ursprung_ + QPointF(Pixel(links), Pixel(oben))).toPoint();
    const QPoint ende = (ursprung_ + QPointF(Pixel(links + breite), Pixel(oben + hoehe))).toPoint();
    return {ecke, QSize(ende.x() - ecke.x(), ende.y() - ecke.y())};
}

QSize KastenMasse::Mindestgroesse()
{
    return QSizeF(MassstabMin * Gesamtbreite, MassstabMin * Gesamthoehe(FachHoeheMin)).toSize();
}

int KastenMasse::Hoehe(int breite)
{
    return static_cast<int>(std::lround(breite * Gesamthoehe(FachHoeheSoll) / Gesamtbreite));
}

} // namespace paukfix
