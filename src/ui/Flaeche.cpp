// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Flaeche.h"

#include "Farben.h"
#include "Hausfarben.h"

#include <QPainter>

namespace paukfix {

Flaeche::Flaeche(QWidget *parent, QPalette::ColorRole grund) : QWidget(parent)
{
    setBackgroundRole(grund);
}

void Flaeche::SetUmriss(Umriss umriss)
{
    umriss_ = umriss;
    update();
}

void Flaeche::paintEvent(QPaintEvent *)
{
    constexpr qreal Radius = 8;
    const QColor grund = palette().color(backgroundRole());
    const Hausfarben &farben = HausfarbenZu(palette());
    QPen stift(Farben::Getoent(palette().color(foregroundRole()), grund, 0.25));
    switch (umriss_) {
    case Umriss::Keiner:
        stift = Qt::NoPen;
        break;
    case Umriss::Fein:
        break;
    case Umriss::Feld:
        stift.setColor(Farben::Lesbar(farben.umriss, grund, Farben::KontrastUmriss));
        break;
    case Umriss::Gestrichelt:
        stift.setColor(Farben::Lesbar(farben.umriss, grund, Farben::KontrastUmriss));
        stift.setStyle(Qt::DashLine);
        break;
    case Umriss::Fokus:
        stift = QPen(Farben::Lesbar(farben.fokus, grund, Farben::KontrastUmriss), 2);
        break;
    }
    const qreal halb = stift.widthF() / 2;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setBrush(grund);
    maler.setPen(stift);
    maler.drawRoundedRect(QRectF(rect()).adjusted(halb, halb, -halb, -halb), Radius, Radius);
}

} // namespace paukfix
