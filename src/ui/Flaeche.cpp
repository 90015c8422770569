// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Flaeche.h"

#include "Farben.h"

#include <QPainter>

Flaeche::Flaeche(QWidget *parent, QPalette::ColorRole grund) : QWidget(parent)
{
    setBackgroundRole(grund);
}

void Flaeche::SetUmriss(bool umriss)
{
    umriss_ = umriss;
    update();
}

void Flaeche::paintEvent(QPaintEvent *)
{
    constexpr qreal Radius = 9;
    const QColor grund = palette().color(backgroundRole());
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setBrush(grund);
    maler.setPen(umriss_ ? QPen(Farben::Getoent(palette().color(QPalette::WindowText), grund, 0.25))
                         : Qt::NoPen);
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}
