// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sizer.h"

#include "Hausfarben.h"

#include <QMouseEvent>
#include <QPainter>

namespace paukfix {

Sizer::Sizer(QWidget *parent) : QWidget(parent)
{
    setCursor(Qt::SizeFDiagCursor);
    setFixedSize(14, 14);
}

void Sizer::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(palette().color(QPalette::Base), 2));
    maler.setBrush(HausfarbenZu(palette()).fokus);
    maler.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}

void Sizer::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    griff_ = event->position().toPoint();
    gegriffen();
}

void Sizer::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        gezogen(mapToParent(event->position().toPoint()) - griff_);
}

void Sizer::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        losgelassen();
}

} // namespace paukfix
