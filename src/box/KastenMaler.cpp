// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KastenMaler.h"

#include "KastenFarben.h"

#include <QFontInfo>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Makes the font smaller until `text` is no wider than `breite`.
QFont Passend(QFont schrift, const QString &text, int breite)
{
    while (schrift.pixelSize() > 6 && QFontMetrics(schrift).horizontalAdvance(text) > breite)
        schrift.setPixelSize(schrift.pixelSize() - 1);
    return schrift;
}

void WanneZeichnen(QPainter &maler, const QRectF &wanne, const QColor &farbe)
{
    const double rundung = 12;
    const double dicke = 5;
    maler.setPen(Qt::NoPen);
    // The handle at the front.
    const double griff = std::clamp(wanne.width() * 0.2, 30.0, 90.0);
    const QRectF messing(wanne.center().x() - griff / 2, wanne.bottom() - 6, griff, 20);
    maler.setBrush(QColor(0, 0, 0, 40));
    maler.drawRoundedRect(messing.translated(0, 4), 7, 7);
    maler.setBrush(KastenFarben::HonigDunkel.darker(125));
    maler.drawRoundedRect(messing, 7, 7);
    maler.setBrush(KastenFarben::HonigDunkel);
    maler.drawRoundedRect(messing.adjusted(0, 0, 0, -3), 7, 7);
    maler.setBrush(QColor(0, 0, 0, 40));
    maler.drawRoundedRect(wanne.adjusted(0, 4, 0, dicke + 4), rundung, rundung);
    maler.setBrush(farbe.darker(140));
    maler.drawRoundedRect(wanne.adjusted(0, 0, 0, dicke), rundung, rundung);
    QLinearGradient licht(wanne.topLeft(), wanne.bottomLeft());
    licht.setColorAt(0, farbe.lighter(112));
    licht.setColorAt(0.15, farbe);
    licht.setColorAt(1, farbe);
    maler.setBrush(licht);
    maler.drawRoundedRect(wanne, rundung, rundung);
}

// The large surfaces are most of the box's painting: each is drawn once for its size.
void WanneMalen(QPainter &maler, const QRect &platz, const QColor &farbe)
{
    constexpr int Unten = 24; // for handle and shadow
    const qreal dichte = maler.device()->devicePixelRatio();
    const QString schluessel =
        u"Wanne %1x%2@%3 %4"_s.arg(platz.width()).arg(platz.height()).arg(dichte).arg(farbe.name());
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = QPixmap((QSizeF(platz.width(), platz.height() + Unten) * dichte).toSize());
        bild.setDevicePixelRatio(dichte);
        bild.fill(Qt::transparent);
        QPainter zeichner(&bild);
        zeichner.setRenderHint(QPainter::Antialiasing);
        WanneZeichnen(zeichner, QRectF(QPointF(), QSizeF(platz.size())), farbe);
        QPixmapCache::insert(schluessel, bild);
    }
    maler.drawPixmap(platz.topLeft(), bild);
}

// A tick on the uppermost done card.
void HakenMalen(QPainter &maler, double seite)
{
    maler.setPen(QPen(KastenFarben::Koralle, seite * 0.03, Qt::SolidLine, Qt::RoundCap));
    maler.drawLine(QPointF(-seite * 0.34, -seite * 0.28), QPointF(seite * 0.34, -seite * 0.28));
    maler.setPen(Qt::NoPen);
    maler.setBrush(KastenFarben::Minze);
    maler.drawEllipse(QPointF(0, seite * 0.08), seite * 0.24, seite * 0.24);
    QPainterPath haken;
    haken.moveTo(-seite * 0.10, seite * 0.08);
    haken.lineTo(-seite * 0.02, seite * 0.16);
    haken.lineTo(seite * 0.12, seite * 0.00);
    maler.setBrush(Qt::NoBrush);
    maler.setPen(QPen(KastenFarben::Papier, seite * 0.07, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.drawPath(haken);
}

constexpr int Stapellagen = 8;
constexpr std::array<double, 4> Stapeldrehung{6, -7, 3, -2};

} // namespace

QFont KastenMaler::Schrift(const QFont &schrift, const KastenMasse &masse, double groesse, bool fett)
{
    const double kasten = masse.Pixel(15) / 1.5;
    const double mass = std::clamp(kasten, 0.9, 1.7) + 0.6 * std::max(0.0, kasten - 1.7);
    QFont neu = schrift;
    neu.setPixelSize(std::max(1, static_cast<int>(QFontInfo(schrift).pixelSize() * mass * groesse)));
    neu.setBold(fett);
    return neu;
}

QFont KastenMaler::Schrift(double groesse, bool fett) const
{
    return Schrift(kasten_.font(), masse_, groesse, fett);
}

void KastenMaler::Malen(const FachTabelle &tabelle)
{
    WanneMalen(maler_, masse_.neu, KastenFarben::Petrol);
    WanneMalen(maler_, masse_.lernen, KastenFarben::Petrol);
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        ZaehlerMalen(masse_.zaehler[i], tabelle[i], true);
        if (UeberKapazitaet(tabelle[i]))
            WarnungMalen(masse_.zaehler[i]);
    }
    StapelMalen(tabelle[FachErledigt]);
    TasteMalen();
}

void KastenMaler::TasteMalen()
{
    const QFont schrift = Schrift(Klein, true);
    const double seite = QFontMetrics(schrift).height() * 1.25;
    const QColor farbe = kasten_.palette().color(QPalette::WindowText);
    const QRectF taste(masse_.wuerfelTaste.center().x() - seite / 2, masse_.wuerfelTaste.top() + 2, seite,
                       seite);
    maler_.setBrush(Qt::NoBrush);
    maler_.setPen(QPen(farbe, 1));
    maler_.drawRoundedRect(taste, 3.5, 3.5);
    maler_.setFont(schrift);
    maler_.drawText(taste, Qt::AlignCenter, u"W"_s);
}

void KastenMaler::ZaehlerMalen(const QRect &platz, const Fach &fach, bool mitKapazitaet)
{
    const QString anzahl = QString::number(fach.Anzahl);
    maler_.setPen(KastenFarben::Papier);
    QRect zeile = platz;
    const int breite = platz.width() - 6; // numbers of neighbours must not read as one
    const QFont gross = Passend(Schrift(Gross, true), anzahl, breite);
    maler_.setFont(gross);
    maler_.drawText(zeile, Qt::AlignHCenter | Qt::AlignTop, anzahl);
    if (!mitKapazitaet)
        return;
    zeile.setTop(zeile.top() + QFontMetrics(Schrift(Gross, true)).height());
    const QString kapazitaet = u"/ %1"_s.arg(fach.Kapazitaet);
    maler_.setFont(Passend(Schrift(Klein), kapazitaet, breite));
    maler_.setPen(KastenFarben::PapierSchatten);
    maler_.drawText(zeile, Qt::AlignHCenter | Qt::AlignTop, kapazitaet);
}

void KastenMaler::StapelMalen(const Fach &fach)
{
    QRect wanne = masse_.lernen;
    wanne.setLeft(masse_.stapel.left());
    wanne.setRight(masse_.stapel.right());
    WanneMalen(maler_, wanne, KastenFarben::MinzeDunkel);
    ZaehlerMalen(masse_.stapelZaehler, fach, false);

    const double seite = masse_.stapel.width() * 0.66;
    const QRectF karte(-seite / 2, -seite * 0.46, seite, seite * 0.92);
    const double rundung = seite * 0.16;
    const QPointF mitte = QRectF(masse_.stapel).center();
    const int anzahl = std::max<int>(fach.Anzahl, 0);
    if (anzahl == 0) {
        maler_.setBrush(Qt::NoBrush);
        maler_.setPen(QPen(KastenFarben::Papier, 1.6, Qt::DashLine));
        maler_.setOpacity(0.6);
        maler_.drawRoundedRect(karte.translated(mitte), rundung, rundung);
        maler_.setOpacity(1);
        return;
    }
    // A pile that grows, but stays a pile: one more card lies there for twice as many.
    int lagen = 1;
    for (int rest = anzahl; rest > 1 && lagen < Stapellagen; rest /= 2)
        ++lagen;
    for (int lage = 0; lage < lagen; ++lage) {
        const bool oberste = lage + 1 == lagen;
        maler_.save();
        maler_.translate(mitte + QPointF(0, (lagen / 2.0 - lage) * seite * 0.07));
        maler_.rotate(oberste ? -4 : Stapeldrehung[static_cast<std::size_t>(lage) % Stapeldrehung.size()]);
        const QColor farbe = oberste         ? KastenFarben::Honig
                             : lage % 3 == 1 ? KastenFarben::Himmel
                                             : KastenFarben::Papier;
        maler_.setPen(Qt::NoPen);
        maler_.setBrush(farbe.darker(128));
        maler_.drawRoundedRect(karte.translated(0, seite * 0.045), rundung, rundung);
        maler_.setBrush(farbe);
        maler_.drawRoundedRect(karte, rundung, rundung);
        if (oberste)
            HakenMalen(maler_, seite);
        maler_.restore();
    }
}

void KastenMaler::WarnungMalen(const QRect &platz)
{
    const QFont schrift = Schrift(0.72, true);
    const QFontMetrics metrik(schrift);
    const double hoehe = metrik.height() * 1.3;
    const QString text = u"zu voll"_s;
    const double luecke = hoehe * 0.3;
    const double mitText = hoehe + luecke + metrik.horizontalAdvance(text);
    const bool textPasst = mitText <= platz.width();
    double links = platz.center().x() - (textPasst ? mitText : hoehe) / 2 + 0.5;
    const QRectF zeichen(links, platz.bottom() - hoehe, hoehe, hoehe);
    QPainterPath dreieck;
    dreieck.moveTo(zeichen.center().x(), zeichen.top());
    dreieck.lineTo(zeichen.right(), zeichen.bottom());
    dreieck.lineTo(zeichen.left(), zeichen.bottom());
    dreieck.closeSubpath();
    maler_.setPen(QPen(KastenFarben::Honig, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler_.setBrush(KastenFarben::Honig);
    maler_.drawPath(dreieck);
    maler_.setFont(schrift);
    maler_.setPen(KastenFarben::Tinte);
    maler_.drawText(zeichen.adjusted(0, hoehe * 0.16, 0, 0), Qt::AlignCenter, u"!"_s);
    if (textPasst) {
        maler_.setPen(KastenFarben::Papier);
        maler_.drawText(QRectF(zeichen.right() + luecke, zeichen.top(), mitText, hoehe),
                        Qt::AlignLeft | Qt::AlignVCenter, text);
    }
}

} // namespace paukfix
