// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildpunkte.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

Bildpunkte::Bildpunkte(int anzahl, QWidget *parent) : QWidget(parent), anzahl_(anzahl)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    SetBild(0);
}

void Bildpunkte::SetBild(int bild)
{
    bild_ = bild;
    setAccessibleName(u"Bild %1 von %2"_s.arg(bild + 1).arg(anzahl_));
    update();
}

QSize Bildpunkte::sizeHint() const
{
    const int zeile = fontMetrics().height();
    return {zeile * (anzahl_ * 5 / 4 + 1), zeile * 7 / 4};
}

QPointF Bildpunkte::Mitte(int bild) const
{
    const double rand = fontMetrics().height() / 2.0;
    return {rand + (width() - 2 * rand) * (bild + 0.5) / anzahl_, height() / 2.0};
}

// On a ground of the palette, so that they are seen on any picture.
void Bildpunkte::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    maler.setBrush(palette().window());
    maler.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    const double radius = fontMetrics().height() * 0.25;
    for (int bild = 0; bild < anzahl_; ++bild) {
        maler.setPen(QPen(palette().color(QPalette::WindowText), radius / 3));
        maler.setBrush(bild == bild_ ? palette().windowText() : QBrush(Qt::NoBrush));
        maler.drawEllipse(Mitte(bild), radius, radius);
    }
}

void Bildpunkte::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !rect().contains(event->pos()))
        return;
    int naechster = 0;
    for (int bild = 1; bild < anzahl_; ++bild)
        if (std::abs(Mitte(bild).x() - event->pos().x()) < std::abs(Mitte(naechster).x() - event->pos().x()))
            naechster = bild;
    Gewaehlt(naechster);
}

} // namespace paukfix
