// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BildBox.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace paukfix {

QMargins RandUmBild(const QRect &text, const QRect &bild)
{
    constexpr int Abstand = 10;
    if (!bild.intersects(text))
        return {};
    const int links = bild.left() - Abstand - text.left();
    const int rechts = text.right() - Abstand - bild.right();
    const int genug = text.width() / 3;
    if (links > genug)
        return {0, 0, text.width() - links, 0};
    return rechts > genug ? QMargins(text.width() - rechts, 0, 0, 0) : QMargins();
}

BildBox::BildBox(QWidget *parent) : QWidget(parent)
{
    setCursor(Qt::OpenHandCursor);
    setAttribute(Qt::WA_Hover); // its outline comes and goes with the mouse
}

void BildBox::SetBild(const QImage &bild)
{
    bild_ = bild;
    skaliert_ = {};
    update();
}

void BildBox::paintEvent(QPaintEvent *)
{
    if (bild_.isNull())
        return;
    const qreal dichte = devicePixelRatioF();
    const QSize platz = (QSizeF(size()) * dichte).toSize();
    const QSize soll = bild_.size().scaled(platz, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (skaliert_.size() != soll) {
        skaliert_ = QPixmap::fromImage(bild_.scaled(soll, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        skaliert_.setDevicePixelRatio(dichte);
    }
    const QSizeF logisch = QSizeF(soll) / dichte;
    QPainter maler(this);
    maler.drawPixmap(QPointF((width() - logisch.width()) / 2, (height() - logisch.height()) / 2), skaliert_);
    if (focusPolicy() != Qt::NoFocus && (hasFocus() || underMouse())) {
        maler.setPen(QPen(palette().color(QPalette::Highlight), hasFocus() ? 2 : 1));
        maler.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void BildBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    griff_ = event->position().toPoint();
    setCursor(Qt::ClosedHandCursor);
    gegriffen();
}

void BildBox::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    // A hand is not quite still when it clicks.
    if (!gezogen_ &&
        (event->position().toPoint() - griff_).manhattanLength() < QApplication::startDragDistance() / 2)
        return;
    move(begrenzen(mapToParent(event->position().toPoint()) - griff_));
    gezogen_ = true;
}

void BildBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    setCursor(Qt::OpenHandCursor);
    const bool war = std::exchange(gezogen_, false);
    if (war)
        gezogen();
    losgelassen();
    if (!war && rect().contains(event->position().toPoint()))
        angeklickt();
}

} // namespace paukfix
