// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KastenMasse.h"

#include "Schriftgrade.h"

#include <QFontInfo>
#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Twips. The trays' walls stand around the outer compartments; the die has the gap between the trays.
constexpr double Wand = 90;
constexpr double TiefeRechts = 335, TiefeHoch = 195;
constexpr double KartenMin = 1700, KartenGut = 2100, KartenMax = 3600;
constexpr double WandAnteil = 0.785, TrennerAnteil = 0.726; // of the cards' height
constexpr double ErledigtLinks = 7995, ErledigtBreite = 830;
constexpr double KarteBreite = 960, KarteHoehe = 640;
constexpr double WuerfelLinks = 2640, WuerfelSeite = 630;
constexpr double Gesamtbreite = 9220;
constexpr double RandRechts = 300; // of the head

constexpr int KleinsterBalken = 3;  // pixels; a compartment with one card is not an empty one
constexpr double Bezugsbreite = 96; // the box is so many of the font's pixels wide where texts begin to grow

int Pixelgroesse(const QFont &schrift)
{
    return std::max(1, QFontInfo(schrift).pixelSize());
}

QFont Mit(QFont schrift, double pixel, bool fett)
{
    schrift.setPixelSize(std::max(1, static_cast<int>(std::lround(pixel))));
    schrift.setWeight(fett ? QFont::DemiBold : QFont::Normal);
    return schrift;
}

int Ganz(double wert)
{
    return static_cast<int>(std::lround(wert));
}

} // namespace

KastenMasse::KastenMasse(QSize fenster, const FachTabelle &tabelle, const QFont &schrift)
{
    const double grad = Pixelgroesse(schrift);
    // A low window has a narrower box: head and near wall, at their smallest, leave the cards so much.
    massstab_ =
        std::min(fenster.width() / Gesamtbreite, (fenster.height() - 10.5 * grad) / (KartenMin + TiefeHoch));
    if (massstab_ <= 0)
        return;
    links_ = (fenster.width() - Pixel(Gesamtbreite)) / 2;
    wand = Pixel(Wand);
    tiefe = {Pixel(TiefeRechts), -Pixel(TiefeHoch)};
    StufeWaehlen(fenster, schrift);

    const int unten = Ganz(1.4 * grad); // for the shadow
    const double rest = fenster.height() - kopf_ - fuss_ - unten + tiefe.y();
    karte = QSizeF(Pixel(KarteBreite), Pixel(KarteHoehe)).toSize();
    // Above the cards there is room for one that flies.
    const double strasse = std::min(karte.height() + 1.0 * grad, rest - Pixel(KartenGut));
    const double karten = std::clamp(rest - strasse, Pixel(KartenMin), Pixel(KartenMax));
    const int boden = fenster.height() - unten - fuss_;
    const int kastenUnten = boden + fuss_;
    const int kartenOben = boden - Ganz(karten);
    const int wandOben = boden - Ganz(karten * WandAnteil);
    trennerOben = boden - Ganz(karten * TrennerAnteil);

    const int schildOben = boden + Ganz(0.5 * grad);
    const int schildUnten = schildOben + Ganz(1.45 * Pixelgroesse(schildSchrift));
    const int zaehlerOben = schildUnten + Ganz(0.25 * grad);
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const double links = tabelle[i].Links;
        const double breite = tabelle[i].BreiteMax;
        // Names and counts may use the dividers too, half of each, and the trays' outer walls.
        const double zuvor =
            i > 1 ? (links + tabelle[i - 1].Links + tabelle[i - 1].BreiteMax) / 2 : links - Wand;
        const double danach = i > 0 && i + 1 < FachSichtbar ? (links + breite + tabelle[i + 1].Links) / 2
                                                            : links + breite + Wand;
        fach[i] = Rechteck(links, breite, kartenOben, boden);
        schild[i] = Rechteck(zuvor, danach - zuvor, schildOben, schildUnten);
        zaehler[i] = Rechteck(zuvor, danach - zuvor, zaehlerOben, kastenUnten - 2);
    }
    const Fach &erstes = tabelle[1];
    const Fach &letztes = tabelle[FachSichtbar - 1];
    neu = {Rechteck(tabelle[0].Links - Wand, tabelle[0].BreiteMax + 2 * Wand, wandOben, kastenUnten), boden};
    lernen = {Rechteck(erstes.Links - Wand, letztes.Links + letztes.BreiteMax - erstes.Links + 2 * Wand,
                       wandOben, kastenUnten),
              boden};
    erledigt = {Rechteck(ErledigtLinks, ErledigtBreite, wandOben, kastenUnten), boden};
    stapel = Rechteck(ErledigtLinks + Wand, ErledigtBreite - 2 * Wand, wandOben, boden);
    stapelSchild = Rechteck(ErledigtLinks, ErledigtBreite, schildOben, schildUnten);
    stapelZaehler = Rechteck(ErledigtLinks, ErledigtBreite, zaehlerOben, kastenUnten - 2);
    const int seite = Ganz(Pixel(WuerfelSeite));
    wuerfel = Rechteck(WuerfelLinks, WuerfelSeite, boden - seite, boden + Ganz(seite * 0.07));
    wuerfelTaste =
        Rechteck(WuerfelLinks - 60, WuerfelSeite + 120, wuerfel.bottom() + Ganz(0.6 * grad), kastenUnten);
    einladung = Rechteck(tabelle[0].Links - Wand, erstes.Links - tabelle[0].Links, 0, kopf_);
    einladung.setRight(lernen.vorn.left() - Ganz(grad));
    ueberblick = lernen.vorn;
    ueberblick.setTop(0);
    ueberblick.setBottom(kopf_ - 1);
    ueberblick.setRight(Ganz(links_ + Pixel(Gesamtbreite - RandRechts)));
    const int hoechste = kartenOben + Ganz(tiefe.y() - karten * 0.04) - 2;
    bild = QRect(0, hoechste, fenster.width(), fenster.height() - hoechste);
}

void KastenMasse::StufeWaehlen(QSize fenster, const QFont &schrift)
{
    for (const double zahl : {Schriftgrad::Anzeige, Schriftgrad::Gross, 1.0})
        for (const Stufe versuch :
             {Stufe::Alles, Stufe::OhneLegende, Stufe::OhneAntworten, Stufe::OhneKapazitaet})
            if (Passt(versuch, zahl, fenster, schrift))
                return;
}

// Takes what `versuch` with counts of this size needs, and tells whether there is room for it.
bool KastenMasse::Passt(Stufe versuch, double zahl, QSize fenster, const QFont &schrift)
{
    stufe = versuch;
    const double grad = Pixelgroesse(schrift);
    const double mass = grad * std::max(1.0, 1 + 0.7 * (massstab_ * Bezugsbreite / grad - 1));
    const bool gross = versuch < Stufe::OhneAntworten;
    schildSchrift = Mit(schrift, zahl > Schriftgrad::Gross ? Schriftgrad::Gross * mass : mass, true);
    zahlSchrift = Mit(schrift, zahl * mass, true);
    kleineSchrift = Mit(schrift, std::max(11.0, Schriftgrad::Klein * mass), false);
    knopfSchrift = Mit(schrift, gross ? Schriftgrad::Gross * mass : grad, true);
    const double klein = Pixelgroesse(kleineSchrift);
    knopfHoehe = Ganz(gross ? 4.2 * mass : 2.6 * grad);
    kopf_ = Ganz(versuch == Stufe::Alles ? 2.3 * mass + knopfHoehe + 1.8 * klein
                 : gross                 ? 1.5 * mass + knopfHoehe
                                         : 0.9 * grad + knopfHoehe);
    const bool mitKapazitaet = versuch < Stufe::OhneKapazitaet;
    fuss_ = Ganz(2.05 * grad + 1.45 * Pixelgroesse(schildSchrift) + 1.2 * Pixelgroesse(zahlSchrift) +
                 (mitKapazitaet ? 1.35 * klein : 0));

    const double karten = fenster.height() - kopf_ - fuss_ - 2.4 * grad + tiefe.y();
    if (karten < Pixel(KartenGut))
        return false;
    const auto breite = [](const QFont &font, const QString &text) {
        return QFontMetrics(font).horizontalAdvance(text);
    };
    // Two digits in the narrowest compartment, and its capacity; the button beside the drawer.
    const double platz = Pixel(310) - 2;
    return breite(zahlSchrift, u"88"_s) <= platz &&
           (!mitKapazitaet || breite(kleineSchrift, u"/ 50"_s) <= platz) &&
           (!gross ||
            breite(knopfSchrift, u"Weiter lernen: Fach 1"_s) + 4 * Pixelgroesse(knopfSchrift) <= Pixel(2800));
}

std::array<int, FachSichtbar> KastenMasse::Fuellung(const FachTabelle &tabelle, const BoxBild &box) const
{
    std::array<int, FachSichtbar> breiten{};
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const Fach &eins = tabelle[i];
        // The Neu bar keeps its width; how far its cards reach is the share of its capacity all the same.
        const double twips =
            i == FachNeu && eins.Kapazitaet > 0
                ? std::min(1.0, double(std::max<qint16>(eins.Anzahl, 0)) / eins.Kapazitaet) * eins.BreiteMax
                : box.Breite[i];
        breiten[i] = std::clamp(Ganz(Pixel(twips)), eins.Anzahl > 0 ? KleinsterBalken : 0,
                                std::max(fach[i].width(), KleinsterBalken));
    }
    return breiten;
}

QRect KastenMasse::Karte(double links, double oben) const
{
    return {QPoint(Ganz(links_ + Pixel(links)), Ganz(Pixel(oben))), karte};
}

// Both edges are rounded, so that neighbours meet in every size. `unten` is the first line below.
QRect KastenMasse::Rechteck(double links, double breite, int oben, int unten) const
{
    const int von = Ganz(links_ + Pixel(links)), bis = Ganz(links_ + Pixel(links + breite));
    return {von, oben, bis - von, unten - oben};
}

QSize KastenMasse::Mindestgroesse(const QFont &schrift)
{
    return QSize(47, 22) * Pixelgroesse(schrift);
}

int KastenMasse::Hoehe(int breite)
{
    return Ganz(breite * 0.62);
}

} // namespace paukfix
