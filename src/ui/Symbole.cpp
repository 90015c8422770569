// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Symbole.h"

#include "Farben.h"

#include <QFont>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <memory>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qreal Raster = 20; // the drawings' width and height

void Linie(QPainter &maler, std::initializer_list<QPointF> punkte)
{
    maler.drawPolyline(punkte.begin(), static_cast<int>(punkte.size()));
}

struct Zeichen
{
    QRectF platz;
    qreal pixel = 15;
    bool kursiv = false;
    bool fett = true;
};

void Buchstabe(QPainter &maler, const QString &text, const Zeichen &zeichen)
{
    QFont schrift = QGuiApplication::font();
    schrift.setPixelSize(static_cast<int>(zeichen.pixel));
    schrift.setBold(zeichen.fett);
    schrift.setItalic(zeichen.kursiv);
    maler.setFont(schrift);
    maler.drawText(zeichen.platz, Qt::AlignCenter | Qt::TextDontClip, text);
}

void Stellung(QPainter &maler, Symbole welches)
{
    Buchstabe(maler, u"x"_s, {.platz = {1, 1, 12, 17}});
    if (welches == Symbole::Hochgestellt)
        Buchstabe(maler, u"2"_s, {.platz = {11, 0, 8, 10}, .pixel = 10});
    else
        Buchstabe(maler, u"2"_s, {.platz = {11, 10, 8, 10}, .pixel = 10});
}

void Textzeichen(QPainter &maler, Symbole welches, const QColor &farbe)
{
    const QRectF ganz{0, 0, Raster, Raster};
    switch (welches) {
    case Symbole::Fett:
        Buchstabe(maler, u"F"_s, {.platz = ganz, .pixel = 16});
        break;
    case Symbole::Kursiv:
        Buchstabe(maler, u"K"_s, {.platz = ganz, .pixel = 16, .kursiv = true});
        break;
    case Symbole::Unterstrichen:
        Buchstabe(maler, u"U"_s, {.platz = {0, -1, Raster, Raster - 2}, .pixel = 14, .fett = false});
        Linie(maler, {{4, 17.5}, {16, 17.5}});
        break;
    case Symbole::Hochgestellt:
    case Symbole::Tiefgestellt:
        Stellung(maler, welches);
        break;
    case Symbole::Normalstellung: {
        Buchstabe(maler, u"x"_s, {.platz = {0, 0, Raster, 16}});
        QPen stift = maler.pen();
        stift.setDashPattern({1.2, 1.6});
        maler.setPen(stift);
        Linie(maler, {{4, 16.5}, {16, 16.5}});
        break;
    }
    case Symbole::Schrift:
        Buchstabe(maler, u"A"_s, {.platz = {0, 0, 13, 19}, .pixel = 17, .fett = false});
        Buchstabe(maler, u"a"_s, {.platz = {11, 4, 9, 15}, .pixel = 12, .fett = false});
        break;
    case Symbole::Farbe:
        Buchstabe(maler, u"A"_s, {.platz = {0, -2, Raster, Raster - 2}, .pixel = 15});
        // The one icon that is about colour: red, with a line of the text's colour around it.
        maler.setBrush(QColor(0xC8, 0x4F, 0x47));
        maler.setPen(QPen(farbe, 0.8));
        maler.drawRoundedRect(QRectF(3.5, 15.5, 13, 3), 1, 1);
        break;
    case Symbole::Standardschrift:
        Buchstabe(maler, u"A"_s, {.platz = {0, 3, 12, 17}, .pixel = 15, .fett = false});
        maler.drawArc(QRectF(9.5, 2, 8, 8), -30 * 16, 250 * 16);
        Linie(maler, {{17.2, 1.4}, {17.4, 5}, {14, 4.6}});
        break;
    default:
        break;
    }
}

void Pfeil(QPainter &maler, qreal mitte, qreal richtung)
{
    Linie(maler,
          {{mitte - 2.5 * richtung, 4.5}, {mitte + 2.5 * richtung, 10}, {mitte - 2.5 * richtung, 15.5}});
}

void Pfeile(QPainter &maler, Symbole welches)
{
    switch (welches) {
    case Symbole::Schnellzurueck:
        Pfeil(maler, 7, -1);
        Pfeil(maler, 13, -1);
        break;
    case Symbole::Zurueck:
        Pfeil(maler, 10, -1);
        break;
    case Symbole::Vor:
        Pfeil(maler, 10, 1);
        break;
    case Symbole::AnsEnde:
        Pfeil(maler, 5, 1);
        Pfeil(maler, 10.5, 1);
        Linie(maler, {{16.5, 4.5}, {16.5, 15.5}});
        break;
    case Symbole::AnsAnfang:
        Linie(maler, {{3.5, 4.5}, {3.5, 15.5}});
        Pfeil(maler, 9.5, -1);
        Pfeil(maler, 15, -1);
        break;
    case Symbole::Hinauf:
        Linie(maler, {{4.5, 9}, {10, 3.5}, {15.5, 9}});
        Linie(maler, {{10, 3.5}, {10, 16.5}});
        break;
    default:
        Pfeil(maler, 7, 1);
        Pfeil(maler, 13, 1);
        break;
    }
}

void Meldungszeichen(QPainter &maler, Symbole welches, const QColor &farbe)
{
    maler.setPen(QPen(farbe, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (welches == Symbole::Ausruf)
        maler.drawPolygon(QPolygonF{{QPointF(10, 2), QPointF(18.5, 17), QPointF(1.5, 17)}});
    else
        maler.drawEllipse(QRectF(1.5, 1.5, 17, 17));
    if (welches == Symbole::Frage) {
        QPainterPath haken(QPointF(7.4, 7.6));
        haken.cubicTo({7.4, 4}, {12.8, 4}, {12.8, 7.6});
        haken.cubicTo({12.8, 9.6}, {10, 9.6}, {10, 12});
        maler.drawPath(haken);
        maler.setBrush(farbe);
        maler.drawEllipse(QPointF(10, 14.8), 0.5, 0.5);
    } else if (welches == Symbole::Ausruf) {
        Linie(maler, {{10, 7.5}, {10, 11.5}});
        maler.setBrush(farbe);
        maler.drawEllipse(QPointF(10, 14.2), 0.5, 0.5);
    } else {
        Linie(maler, {{10, 9.5}, {10, 14.5}});
        maler.setBrush(farbe);
        maler.drawEllipse(QPointF(10, 6.2), 0.5, 0.5);
    }
}

void Lautsprecher(QPainter &maler)
{
    Linie(maler, {{2.5, 7.5}, {5.5, 7.5}, {9.5, 4}, {9.5, 16}, {5.5, 12.5}, {2.5, 12.5}, {2.5, 7.5}});
    maler.drawArc(QRectF(8.5, 6.5, 5, 7), -60 * 16, 120 * 16);
    maler.drawArc(QRectF(9, 3.5, 8.5, 13), -60 * 16, 120 * 16);
}

void Drucker(QPainter &maler)
{
    Linie(maler, {{5.5, 7}, {5.5, 2.5}, {14.5, 2.5}, {14.5, 7}});
    Linie(maler, {{5.5, 14.5}, {2.5, 14.5}, {2.5, 7}, {17.5, 7}, {17.5, 14.5}, {14.5, 14.5}});
    maler.drawRect(QRectF(5.5, 11.5, 9, 6));
}

void Papierkorb(QPainter &maler)
{
    Linie(maler, {{3, 5.5}, {17, 5.5}});
    Linie(maler, {{7.5, 5.5}, {7.5, 2.8}, {12.5, 2.8}, {12.5, 5.5}});
    Linie(maler, {{4.5, 5.5}, {5.3, 17.5}, {14.7, 17.5}, {15.5, 5.5}});
    Linie(maler, {{8.3, 9}, {8.3, 14}});
    Linie(maler, {{11.7, 9}, {11.7, 14}});
}

void Seiten(QPainter &maler, std::initializer_list<QRectF> plaetze)
{
    maler.setPen(QPen(maler.pen().color(), 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QRectF &platz : plaetze)
        maler.drawRoundedRect(platz, 1, 1);
}

void Dateizeichen(QPainter &maler, Symbole welches)
{
    if (welches == Symbole::NeuerOrdner) {
        Linie(maler, {{2, 16}, {2, 4.5}, {7.5, 4.5}, {9.5, 7}, {18, 7}, {18, 16}, {2, 16}});
        Linie(maler, {{10, 9}, {10, 14}});
        Linie(maler, {{7.5, 11.5}, {12.5, 11.5}});
    } else if (welches == Symbole::Kacheln) {
        Seiten(maler, {{3, 3, 5, 5}, {12, 3, 5, 5}, {3, 12, 5, 5}, {12, 12, 5, 5}});
    } else {
        for (const qreal y : {4.5, 10.0, 15.5}) {
            Linie(maler, {{3, y}, {3.5, y}});
            Linie(maler, {{7, y}, {17, y}});
        }
    }
}

void Lupenzeichen(QPainter &maler, bool mehr)
{
    maler.drawEllipse(QPointF(8.5, 8.5), 5.5, 5.5);
    Linie(maler, {{12.6, 12.6}, {17.5, 17.5}});
    Linie(maler, {{6, 8.5}, {11, 8.5}});
    if (mehr)
        Linie(maler, {{8.5, 6}, {8.5, 11}});
}

void Seitenzeichen(QPainter &maler, Symbole welches)
{
    switch (welches) {
    case Symbole::Seitenbreite:
        Linie(maler, {{2, 3.5}, {2, 16.5}});
        Linie(maler, {{18, 3.5}, {18, 16.5}});
        Linie(maler, {{5, 10}, {15, 10}});
        Linie(maler, {{7.5, 7.5}, {5, 10}, {7.5, 12.5}});
        Linie(maler, {{12.5, 7.5}, {15, 10}, {12.5, 12.5}});
        break;
    case Symbole::GanzeSeite:
        Linie(maler, {{3, 7.5}, {3, 3}, {7.5, 3}});
        Linie(maler, {{12.5, 3}, {17, 3}, {17, 7.5}});
        Linie(maler, {{17, 12.5}, {17, 17}, {12.5, 17}});
        Linie(maler, {{7.5, 17}, {3, 17}, {3, 12.5}});
        break;
    case Symbole::Hochformat:
        Seiten(maler, {{5, 2.5, 10, 15}});
        break;
    case Symbole::Querformat:
        Seiten(maler, {{2.5, 5, 15, 10}});
        break;
    case Symbole::EineSeite:
        Seiten(maler, {{5, 2.5, 10, 15}});
        for (const qreal y : {6.5, 9.5, 12.5})
            Linie(maler, {{7.5, y}, {12.5, y}});
        break;
    case Symbole::ZweiSeiten:
        Seiten(maler, {{2, 4, 7, 12}, {11, 4, 7, 12}});
        break;
    case Symbole::AlleSeiten:
        Seiten(maler, {{3, 2, 5.5, 7}, {11.5, 2, 5.5, 7}, {3, 11, 5.5, 7}, {11.5, 11, 5.5, 7}});
        break;
    default: // SeiteEinrichten: a page and its margins
        Seiten(maler, {{4, 2, 12, 16}});
        maler.setPen(QPen(maler.pen().color(), 1.2, Qt::DotLine, Qt::RoundCap));
        maler.drawRect(QRectF(7, 5, 6, 10));
        break;
    }
}

void Dinge(QPainter &maler, Symbole welches, const QColor &farbe)
{
    switch (welches) {
    case Symbole::Bild:
        maler.drawRoundedRect(QRectF(2, 3.5, 16, 13), 2, 2);
        maler.drawEllipse(QPointF(6.6, 7.8), 1.5, 1.5);
        Linie(maler, {{2.5, 15.5}, {7.5, 11}, {9.8, 13.2}, {13.5, 9}, {17.5, 13.2}});
        break;
    case Symbole::Ton:
        Lautsprecher(maler);
        break;
    case Symbole::Suchen:
        maler.drawEllipse(QPointF(8.5, 8.5), 5.5, 5.5);
        Linie(maler, {{12.6, 12.6}, {17.5, 17.5}});
        break;
    case Symbole::Drucken:
        Drucker(maler);
        break;
    case Symbole::Kopieren:
        maler.drawRoundedRect(QRectF(7, 7, 10.5, 10.5), 1.8, 1.8);
        Linie(maler, {{4.3, 13}, {2.5, 13}, {2.5, 2.5}, {13, 2.5}, {13, 4.3}});
        break;
    case Symbole::Loeschen:
        Papierkorb(maler);
        break;
    case Symbole::Abspielen:
        maler.setBrush(farbe);
        maler.drawPolygon(QPolygonF{{QPointF(6, 4), QPointF(16, 10), QPointF(6, 16)}});
        break;
    case Symbole::Haken:
        maler.setPen(QPen(farbe, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        Linie(maler, {{4.5, 10.5}, {8.5, 14.5}, {15.5, 5.5}});
        break;
    case Symbole::Karte:
        maler.drawRoundedRect(QRectF(2, 3.5, 16, 13), 2.5, 2.5);
        Linie(maler, {{4.8, 7.5}, {15.2, 7.5}});
        Linie(maler, {{4.8, 10.5}, {12, 10.5}});
        Linie(maler, {{4.8, 13.3}, {10, 13.3}});
        break;
    case Symbole::Leeren:
        Linie(maler, {{5.5, 5.5}, {14.5, 14.5}});
        Linie(maler, {{14.5, 5.5}, {5.5, 14.5}});
        break;
    case Symbole::NeuerOrdner:
    case Symbole::Kacheln:
    case Symbole::Einzelheiten:
        Dateizeichen(maler, welches);
        break;
    case Symbole::Vergroessern:
    case Symbole::Verkleinern:
        Lupenzeichen(maler, welches == Symbole::Vergroessern);
        break;
    default:
        Meldungszeichen(maler, welches, farbe);
        break;
    }
}

class Symbolzeichner final : public QIconEngine
{
public:
    explicit Symbolzeichner(Symbole welches) : welches_(welches) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        SymbolMalen(
            *painter, rect, welches_,
            palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                          mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap bild(size);
        bild.fill(Qt::transparent);
        QPainter maler(&bild);
        paint(&maler, QRect({}, size), mode, state);
        return bild;
    }

    QIconEngine *clone() const override { return new Symbolzeichner(welches_); }

private:
    Symbole welches_;
};

} // namespace

QIcon Symbol(Symbole welches)
{
    return QIcon(std::make_unique<Symbolzeichner>(welches).release());
}

void SymbolMalen(QPainter &maler, const QRectF &flaeche, Symbole welches, const QColor &farbe)
{
    const qreal seite = std::min(flaeche.width(), flaeche.height());
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    maler.translate(flaeche.center() - QPointF(seite, seite) / 2);
    maler.scale(seite / Raster, seite / Raster);
    maler.setPen(QPen(farbe, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    maler.setBrush(Qt::NoBrush);
    if (welches <= Symbole::Standardschrift)
        Textzeichen(maler, welches, farbe);
    else if (welches >= Symbole::Schnellzurueck && welches <= Symbole::Hinauf)
        Pfeile(maler, welches);
    else if (welches >= Symbole::Seitenbreite)
        Seitenzeichen(maler, welches);
    else
        Dinge(maler, welches, farbe);
    maler.restore();
}

} // namespace paukfix
