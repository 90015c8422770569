// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KastenMaler.h"

#include "Hausfarben.h"
#include "Kartenfaecher.h"
#include "KastenFarben.h"

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Stapellagen = 60; // of more done cards so many are seen

template <std::size_t Ecken>
void Flaeche(QPainter &maler, const QColor &farbe, const std::array<QPointF, Ecken> &ecken)
{
    maler.setPen(Qt::NoPen);
    maler.setBrush(farbe);
    maler.drawConvexPolygon(ecken.data(), static_cast<int>(Ecken));
}

// The corners of a pixel rectangle as a painter sees them.
struct Kasten
{
    explicit Kasten(const QRect &platz)
        : links(platz.left()), rechts(platz.right() + 1), oben(platz.top()), unten(platz.bottom() + 1)
    {
    }

    double links, rechts, oben, unten;
};

} // namespace

QFont KastenMaler::Passend(QFont schrift, const QString &text, int breite)
{
    while (schrift.pixelSize() > 6 && QFontMetrics(schrift).horizontalAdvance(text) > breite)
        schrift.setPixelSize(schrift.pixelSize() - 1);
    return schrift;
}

void KastenMaler::Malen(const Ansicht &ansicht)
{
    const Farben petrol{KastenFarben::Petrol, KastenFarben::PetrolDunkel, KastenFarben::PetrolSeite,
                        KastenFarben::PetrolBoden, KastenFarben::PetrolHell};
    const Farben minze{KastenFarben::MinzeDunkel, KastenFarben::MinzeInnen, KastenFarben::MinzeSeite,
                       KastenFarben::MinzeBoden, KastenFarben::Minze};
    for (const KastenMasse::Wanne &wanne : {masse_.neu, masse_.lernen, masse_.erledigt})
        Schatten(wanne);
    Hinten(masse_.neu, petrol);
    Karten(FachNeu, ansicht);
    Vorn(masse_.neu, petrol);
    Hinten(masse_.lernen, petrol);
    for (std::size_t i = 1; i < FachSichtbar; ++i) {
        // From left to right: what leans over a wall is hidden behind it.
        if (i > 1)
            Trennwand(masse_.fach[i - 1].right() + 1, masse_.fach[i].left());
        Karten(i, ansicht);
    }
    Vorn(masse_.lernen, petrol);
    Hinten(masse_.erledigt, minze);
    Stapel(ansicht.tabelle[FachErledigt].Anzahl);
    Vorn(masse_.erledigt, minze);
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        Zaehler(masse_.zaehler[i], ansicht.tabelle[i], masse_.stufe < KastenMasse::Stufe::OhneKapazitaet,
                ansicht.tickt[i]);
    Zaehler(masse_.stapelZaehler, ansicht.tabelle[FachErledigt], false, ansicht.tickt[FachErledigt]);
    Taste();
}

void KastenMaler::Schatten(const KastenMasse::Wanne &wanne)
{
    const Kasten k(wanne.vorn);
    maler_.setPen(Qt::NoPen);
    maler_.setBrush(QColor(0, 0, 0, 34));
    const double hoehe = masse_.Pixel(85);
    maler_.drawEllipse(QRectF(k.links, k.unten - hoehe * 0.35, k.rechts - k.links + masse_.tiefe.x(), hoehe));
}

// Inside, floor and the upper edges that stand behind the cards.
void KastenMaler::Hinten(const KastenMasse::Wanne &wanne, const Farben &farben)
{
    const Kasten k(wanne.vorn);
    const QPointF tiefe = masse_.tiefe;
    const double wand = masse_.wand, kante = wand * 0.4;
    const QPointF innen(k.links + wand, k.oben), rechts(k.rechts - wand, k.oben);
    const double boden = wanne.boden;
    Flaeche<4>(maler_, farben.kante,
               {QPointF(k.links, k.oben), QPointF(k.links, k.oben) + tiefe, QPointF(k.rechts, k.oben) + tiefe,
                QPointF(k.rechts, k.oben)});
    // The back wall ends below its upper edge.
    const QPointF hinten = tiefe + QPointF(-kante * tiefe.x() / std::max(1.0, -tiefe.y()), kante);
    Flaeche<5>(maler_, farben.innen,
               {innen, innen + hinten, QPointF(k.rechts + tiefe.x() - wand - kante, innen.y() + hinten.y()),
                QPointF(rechts.x(), boden), QPointF(innen.x(), boden)});
    Flaeche<4>(maler_, farben.boden,
               {QPointF(innen.x(), boden), QPointF(innen.x(), boden) + tiefe,
                QPointF(rechts.x(), boden + tiefe.y()), QPointF(rechts.x(), boden)});
    Flaeche<4>(maler_, farben.seite,
               {innen, innen + hinten, QPointF(innen.x() + hinten.x(), boden + tiefe.y()),
                QPointF(innen.x(), boden)});
    // The left wall's near edge.
    Flaeche<4>(maler_, farben.vorn,
               {QPointF(k.links, k.oben), innen, QPointF(innen.x(), boden + 1), QPointF(k.links, boden + 1)});
}

// The right wall and the near one, which hide what leans over them.
void KastenMaler::Vorn(const KastenMasse::Wanne &wanne, const Farben &farben)
{
    const Kasten k(wanne.vorn);
    const QPointF tiefe = masse_.tiefe;
    const double wand = masse_.wand, boden = wanne.boden, rundung = std::min(9.0, wand);
    const QPointF oben(k.rechts, k.oben), unter(1, 0);
    // It goes on below the near wall: of a pixel that both share in half the window would be seen.
    Flaeche<4>(maler_, farben.seite,
               {oben - unter, oben + tiefe, QPointF(k.rechts, k.unten - rundung) + tiefe,
                QPointF(k.rechts, k.unten - rundung) - unter});
    // Below, the corners are round.
    Flaeche<3>(maler_, farben.seite,
               {QPointF(k.rechts - rundung, k.unten), QPointF(k.rechts, k.unten - rundung - 1),
                QPointF(k.rechts, k.unten - rundung - 1) + tiefe});
    Flaeche<4>(maler_, farben.kante,
               {oben - QPointF(wand, 0), oben - QPointF(wand, 0) + tiefe, oben + tiefe, oben});
    Flaeche<4>(
        maler_, farben.vorn,
        {oben - QPointF(wand, 0), oben, QPointF(k.rechts, boden + 1), QPointF(k.rechts - wand, boden + 1)});
    maler_.setPen(Qt::NoPen);
    maler_.setBrush(farben.vorn);
    const QRectF unten(k.links, boden, k.rechts - k.links, k.unten - boden);
    maler_.drawRoundedRect(unten, rundung, rundung);
    maler_.drawRect(unten.adjusted(0, 0, 0, -unten.height() / 2));
}

void KastenMaler::Trennwand(int links, int rechts)
{
    const QPointF tiefe = masse_.tiefe;
    const double oben = masse_.trennerOben, boden = masse_.lernen.boden;
    const QPointF eckeLinks(links, oben), eckeRechts(rechts, oben);
    Flaeche<4>(maler_, KastenFarben::PetrolSeite,
               {eckeRechts, eckeRechts + tiefe, QPointF(rechts, boden) + tiefe, QPointF(rechts, boden)});
    Flaeche<4>(maler_, KastenFarben::PetrolHell,
               {eckeLinks, eckeLinks + tiefe, eckeRechts + tiefe, eckeRechts});
    Flaeche<4>(maler_, KastenFarben::Petrol,
               {eckeLinks, eckeRechts, QPointF(rechts, boden + 1), QPointF(links, boden + 1)});
}

void KastenMaler::Karten(std::size_t fach, const Ansicht &ansicht)
{
    if (!maler_.clipBoundingRect().intersects(masse_.Spalte(fach)))
        return;
    const int fehlt = ansicht.unterwegs == static_cast<int>(fach) ? 1 : 0;
    const Kartenfaecher faecher(ansicht.tabelle[fach].Anzahl - fehlt,
                                {.saat = fach * 97,
                                 .innen = masse_.fach[fach].toRectF(),
                                 .gefuellt = double(ansicht.fuellung[fach]),
                                 .pixelJeTwip = masse_.Pixel(1),
                                 .tiefe = masse_.tiefe});
    if (faecher.Karten().empty())
        faecher.LeerMalen(maler_, 0.86 * (masse_.lernen.boden - masse_.trennerOben));
    else
        faecher.Malen(maler_);
}

// Done cards lie one on the other.
void KastenMaler::Stapel(int anzahl)
{
    const QRectF platz = masse_.stapel.toRectF();
    const QPointF tiefe = masse_.tiefe * 0.78;
    const double spiel = platz.width() * 0.02;
    const QRectF unterste(platz.left() + spiel, platz.bottom(), platz.width() * 0.9, 0);
    const auto deckel = [&](const QRectF &karte) {
        return std::array<QPointF, 4>{karte.topLeft(), karte.topLeft() + tiefe, karte.topRight() + tiefe,
                                      karte.topRight()};
    };
    if (anzahl < 1) {
        QPen strich(KastenFarben::PapierSchatten, 1.4, Qt::CustomDashLine);
        strich.setDashPattern({3, 3});
        maler_.setPen(strich);
        maler_.setBrush(Qt::NoBrush);
        maler_.drawConvexPolygon(deckel(unterste.translated(0, -3)).data(), 4);
        return;
    }
    const double dicke = std::min(masse_.Pixel(27), platz.height() * 0.8 / Stapellagen);
    const QPen strich(QColor(0x33, 0x30, 0x4A, 110), 1);
    const int lagen = std::min(anzahl, Stapellagen);
    for (int lage = 0; lage < lagen; ++lage) {
        const bool oberste = lage + 1 == lagen;
        const unsigned streuung = static_cast<unsigned>(lage) * 2654435761u >> 7;
        const QColor farbe = oberste              ? KastenFarben::Papier
                             : streuung % 17 == 0 ? KastenFarben::Rosa
                             : streuung % 9 == 0  ? KastenFarben::Himmel
                                                  : KastenFarben::Papier;
        const QRectF karte =
            unterste.translated(spiel * (streuung % 5 - 2.0), -dicke * (lage + 1)).adjusted(0, 0, 0, dicke);
        maler_.setPen(strich);
        maler_.setBrush(farbe.darker(118));
        const std::array<QPointF, 4> seite{karte.topRight(), karte.topRight() + tiefe,
                                           karte.bottomRight() + tiefe, karte.bottomRight()};
        maler_.drawConvexPolygon(seite.data(), 4);
        maler_.setBrush(farbe);
        maler_.drawRect(karte);
        // What the next card leaves free of it.
        maler_.drawConvexPolygon(deckel(karte).data(), 4);
        if (!oberste)
            continue;
        const QPointF mitte = (deckel(karte)[0] + deckel(karte)[2]) / 2;
        const double breite = karte.width() * 0.19;
        maler_.setPen(Qt::NoPen);
        maler_.setBrush(KastenFarben::MinzeDunkel);
        maler_.drawEllipse(mitte, breite, breite * 0.52);
        maler_.setPen(QPen(KastenFarben::Papier, std::max(1.5, breite * 0.16), Qt::SolidLine, Qt::RoundCap,
                           Qt::RoundJoin));
        maler_.setBrush(Qt::NoBrush);
        maler_.drawPolyline(std::array<QPointF, 3>{mitte + QPointF(-breite * 0.42, 0),
                                                   mitte + QPointF(-breite * 0.1, breite * 0.22),
                                                   mitte + QPointF(breite * 0.5, -breite * 0.22)}
                                .data(),
                            3);
    }
}

void KastenMaler::Zaehler(const QRect &platz, const Fach &fach, bool mitKapazitaet, bool tickt)
{
    const bool zuVoll = fach.Kapazitaet > 0 && UeberKapazitaet(fach);
    const QString anzahl = QString::number(fach.Anzahl);
    QRect zeile = platz;
    zeile.setHeight(QFontMetrics(masse_.zahlSchrift).height());
    if (tickt) // as the wheel of a counter does
        zeile.translate(0, -zeile.height() / 5);
    Zahl(zeile, anzahl, masse_.zahlSchrift, zuVoll && !mitKapazitaet);
    if (!mitKapazitaet || fach.Kapazitaet == 0)
        return;
    QFont schrift = masse_.kleineSchrift;
    if (zuVoll)
        schrift.setWeight(QFont::DemiBold);
    zeile = platz;
    zeile.setTop(platz.top() + QFontMetrics(masse_.zahlSchrift).height() + 1);
    zeile.setHeight(QFontMetrics(schrift).height() + 2);
    Zahl(zeile, u"/ %1"_s.arg(fach.Kapazitaet), schrift, zuVoll);
}

// White on the wall, or red on paper as a warning.
void KastenMaler::Zahl(const QRect &zeile, const QString &text, const QFont &schrift, bool warnung)
{
    // Numbers of neighbours must not read as one.
    const int breite = zeile.width() - std::max(warnung ? 7 : 4, QFontMetrics(schrift).height() * 2 / 5);
    const QFont passend = Passend(schrift, text, breite);
    if (warnung) {
        const QFontMetrics metrik(passend);
        const double weit =
            std::min<double>(zeile.width() - 5, metrik.horizontalAdvance(text) + 0.8 * metrik.height());
        maler_.setPen(Qt::NoPen);
        maler_.setBrush(KastenFarben::Papier);
        maler_.drawRoundedRect(QRectF(zeile.center().x() + 0.5 - weit / 2, zeile.top(), weit, zeile.height()),
                               4, 4);
    }
    maler_.setFont(passend);
    maler_.setPen(warnung ? KastenFarben::Warnung : KastenFarben::Papier);
    maler_.drawText(zeile, Qt::AlignCenter, text);
}

void KastenMaler::Taste()
{
    QFont schrift = masse_.kleineSchrift;
    schrift.setWeight(QFont::DemiBold);
    const Hausfarben &farben = HausfarbenZu(palette_);
    const double seite = QFontMetrics(schrift).height() * 1.3;
    const QRectF taste(masse_.wuerfelTaste.center().x() + 0.5 - seite / 2, masse_.wuerfelTaste.top() + 0.5,
                       seite, seite * 0.9);
    maler_.setBrush(Qt::NoBrush);
    maler_.setPen(QPen(farben.umriss, 1));
    maler_.drawRoundedRect(taste, 4, 4);
    maler_.setFont(schrift);
    maler_.setPen(farben.leise);
    maler_.drawText(taste, Qt::AlignCenter, u"W"_s);
}

} // namespace paukfix
