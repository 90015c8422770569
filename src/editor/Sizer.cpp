// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sizer.h"

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
    maler.setPen(palette().color(QPalette::Base));
    maler.setBrush(palette().color(QPalette::Highlight));
    maler.drawRect(rect().adjusted(0, 0, -1, -1));
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

} // namespace paukfix
