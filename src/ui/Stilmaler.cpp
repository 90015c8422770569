// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Stilmaler.h"

#include "Farben.h"
#include "Hausfarben.h"

#include <QPainter>
#include <QStyleOption>

#include <array>

namespace paukfix {

namespace {

void Rundes(QPainter &maler, const QRectF &flaeche, qreal radius, const QPen &stift, const QBrush &grund)
{
    const qreal halb = stift.style() == Qt::NoPen ? 0 : stift.widthF() / 2;
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(stift);
    maler.setBrush(grund);
    maler.drawRoundedRect(flaeche.adjusted(halb, halb, -halb, -halb), radius, radius);
    maler.restore();
}

// What cannot be used stands back.
QColor Zurueckgenommen(const QColor &farbe, const QPalette &palette)
{
    return Farben::Getoent(farbe, palette.color(QPalette::Window), 0.45);
}

QPen Feldrand(const QStyleOption &option, const QColor &farbe = {})
{
    if (!(option.state & QStyle::State_Enabled))
        return Zurueckgenommen(Stilmaler::Umriss(option.palette), option.palette);
    return farbe.isValid() ? farbe : Stilmaler::Umriss(option.palette);
}

QColor Knopfflaeche(const QStyleOption &option, Stilmaler::Knopfart art)
{
    const Hausfarben &haus = HausfarbenZu(option.palette);
    const bool gedrueckt = option.state & (QStyle::State_Sunken | QStyle::State_On);
    const bool darueber = option.state & QStyle::State_MouseOver;
    if (art == Stilmaler::Knopfart::Leitend) {
        if (!(option.state & QStyle::State_Enabled))
            return Zurueckgenommen(haus.akzent, option.palette);
        return gedrueckt ? haus.akzent.darker(112) : darueber ? haus.akzent.lighter(108) : haus.akzent;
    }
    const QColor grund = Stilmaler::Knopfgrund(option.palette);
    if (!(option.state & QStyle::State_Enabled))
        return Zurueckgenommen(grund, option.palette);
    return gedrueckt ? haus.gewaehlt : darueber ? Farben::Getoent(haus.gewaehlt, grund, 0.5) : grund;
}

} // namespace

namespace Stilmaler {

QColor Umriss(const QPalette &palette)
{
    return Farben::Lesbar(HausfarbenZu(palette).umriss, palette.color(QPalette::Window),
                          Farben::KontrastUmriss);
}

QColor Fokus(const QPalette &palette)
{
    return Farben::Lesbar(HausfarbenZu(palette).fokus, palette.color(QPalette::Window),
                          Farben::KontrastUmriss);
}

QColor Knopfgrund(const QPalette &palette)
{
    const QColor fenster = palette.color(QPalette::Window);
    const bool dunkel = fenster.lightness() < palette.color(QPalette::WindowText).lightness();
    return Farben::Getoent(Qt::white, fenster, dunkel ? 0.09 : 0.75);
}

QColor Knopftext(const QPalette &palette, Knopfart art)
{
    if (palette.currentColorGroup() == QPalette::Disabled)
        return art != Knopfart::Leitend
                   ? palette.color(QPalette::ButtonText)
                   : Farben::Lesbar(palette.color(QPalette::ButtonText),
                                    Zurueckgenommen(HausfarbenZu(palette).akzent, palette),
                                    Farben::KontrastUmriss);
    switch (art) {
    case Knopfart::Leitend:
        return HausfarbenZu(palette).akzentTinte;
    case Knopfart::Loeschend:
        return Farben::Lesbar(HausfarbenZu(palette).falschText, Knopfgrund(palette));
    default:
        return Farben::Lesbar(palette.color(QPalette::ButtonText), Knopfgrund(palette));
    }
}

void Knopf(QPainter &maler, const QStyleOptionButton &option, Knopfart art)
{
    const bool nutzbar = option.state & QStyle::State_Enabled;
    const bool beruehrt = option.state & (QStyle::State_Sunken | QStyle::State_On | QStyle::State_MouseOver);
    if ((option.features & QStyleOptionButton::Flat) && !beruehrt)
        return;
    QPen rand = Feldrand(option);
    if (nutzbar && art == Knopfart::Leitend)
        rand.setColor(HausfarbenZu(option.palette).akzentUmriss);
    else if (nutzbar && art != Knopfart::Loeschend && (option.state & QStyle::State_On))
        rand = QPen(Fokus(option.palette), 1.5);
    else if (nutzbar && (art == Knopfart::Loeschend || (option.features & QStyleOptionButton::DefaultButton)))
        rand.setColor(Knopftext(option.palette, art));
    Rundes(maler, option.rect, Radius, rand, Knopfflaeche(option, art));
}

void Werkzeugknopf(QPainter &maler, const QStyleOption &option)
{
    const bool an = option.state & QStyle::State_On;
    const bool beruehrt = option.state & (QStyle::State_Sunken | QStyle::State_MouseOver);
    if (!an && !(beruehrt && (option.state & QStyle::State_Enabled)) &&
        (option.state & QStyle::State_AutoRaise))
        return;
    QPen rand = Feldrand(option, an ? Fokus(option.palette) : QColor());
    if (!an && (option.state & QStyle::State_AutoRaise))
        rand = Qt::NoPen;
    Rundes(maler, option.rect, Radius, rand, Knopfflaeche(option, Knopfart::Gewoehnlich));
}

void Reiter(QPainter &maler, const QStyleOptionTab &option)
{
    const bool gezeigt = option.state & QStyle::State_Selected;
    QStyleOptionTab knopf = option;
    knopf.state.setFlag(QStyle::State_On, gezeigt);
    Rundes(maler, option.rect, Radius, gezeigt ? QPen(Fokus(option.palette), 1.5) : Feldrand(option),
           Knopfflaeche(knopf, Knopfart::Gewoehnlich));
}

void Feld(QPainter &maler, const QStyleOption &option, const QColor &grund)
{
    const bool fokus = (option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_Enabled);
    Rundes(maler, option.rect, Radius, fokus ? QPen(Fokus(option.palette), Ringbreite) : Feldrand(option),
           grund.isValid() ? QBrush(grund) : QBrush(Qt::NoBrush));
}

void Haken(QPainter &maler, const QStyleOption &option, const QColor &farbe)
{
    const bool gedrueckt = option.state & QStyle::State_Sunken;
    const QColor grund =
        gedrueckt ? HausfarbenZu(option.palette).gewaehlt : option.palette.color(QPalette::Base);
    const bool an = option.state & (QStyle::State_On | QStyle::State_NoChange);
    const QColor zeichen =
        Farben::Lesbar(farbe.isValid() ? farbe : HausfarbenZu(option.palette).fokus, grund);
    const QRectF feld = option.rect;
    Rundes(maler, feld, KleinerRadius, Feldrand(option, an ? zeichen : QColor()), grund);
    if (!an)
        return;
    const qreal einheit = feld.width() / 18;
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(
        QPen(option.state & QStyle::State_Enabled ? zeichen : Zurueckgenommen(zeichen, option.palette),
             2.4 * einheit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.translate(feld.topLeft());
    maler.scale(einheit, einheit);
    maler.setPen(QPen(maler.pen().color(), 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (option.state & QStyle::State_NoChange) {
        maler.drawLine(QPointF(5, 9), QPointF(13, 9));
    } else {
        const std::array haken{QPointF(4.8, 9.4), QPointF(7.8, 12.4), QPointF(13.4, 5.6)};
        maler.drawPolyline(haken.data(), static_cast<int>(haken.size()));
    }
    maler.restore();
}

void Punkt(QPainter &maler, const QStyleOption &option, const QColor &farbe)
{
    const bool gedrueckt = option.state & QStyle::State_Sunken;
    const QColor grund =
        gedrueckt ? HausfarbenZu(option.palette).gewaehlt : option.palette.color(QPalette::Base);
    const bool an = option.state & QStyle::State_On;
    const QColor zeichen =
        Farben::Lesbar(farbe.isValid() ? farbe : HausfarbenZu(option.palette).fokus, grund);
    const QRectF feld = option.rect;
    QPen rand = Feldrand(option, an ? zeichen : QColor());
    rand.setWidthF(1.3); // a round line of 1 px would be too faint
    Rundes(maler, feld, feld.width() / 2, rand, grund);
    if (!an)
        return;
    const qreal luft = feld.width() / 4;
    Rundes(maler, feld.adjusted(luft, luft, -luft, -luft), feld.width() / 4, Qt::NoPen,
           option.state & QStyle::State_Enabled ? zeichen : Zurueckgenommen(zeichen, option.palette));
}

void Pfeil(QPainter &maler, const QRectF &flaeche, bool hinauf, const QColor &farbe)
{
    const qreal richtung = hinauf ? -1 : 1;
    const QPointF mitte = flaeche.center();
    const std::array spitze{mitte + QPointF(-4, -2 * richtung), mitte + QPointF(0, 2 * richtung),
                            mitte + QPointF(4, -2 * richtung)};
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setBrush(Qt::NoBrush);
    maler.setPen(QPen(farbe, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.drawPolyline(spitze.data(), static_cast<int>(spitze.size()));
    maler.restore();
}

void Ring(QPainter &maler, const QRectF &flaeche, qreal radius, const QColor &farbe)
{
    Rundes(maler, flaeche, radius, QPen(farbe, Ringbreite), Qt::NoBrush);
}

} // namespace Stilmaler

} // namespace paukfix
