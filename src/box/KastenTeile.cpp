// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KastenTeile.h"

#include "Farben.h"
#include "KastenFarben.h"
#include "KastenMaler.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace paukfix {

Schild::Schild(const QString &text, QWidget *parent) : QLabel(text, parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Schild::SetBetont(bool betont)
{
    if (betont == betont_)
        return;
    betont_ = betont;
    update();
}

void Schild::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QFont schrift = KastenMaler::Passend(font(), text(), width() - 8);
    const QFontMetrics metrik(schrift);
    // As wide as its text asks for, but never wider than its compartment.
    const double breite =
        std::min<double>(width() - 6, metrik.horizontalAdvance(text()) + 0.8 * metrik.height());
    const double hoehe = std::min<double>(height() - 2, 1.35 * metrik.height());
    const QRectF platz((width() - breite) / 2, (height() - hoehe) / 2, breite, hoehe);
    maler.setPen(Qt::NoPen);
    maler.setBrush(KastenFarben::Papier);
    maler.drawRoundedRect(betont_ ? platz.adjusted(-1, -1, 1, 1) : platz, 4, 4);
    if (betont_) {
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(Farben::VollstesFach, 2));
        maler.drawRoundedRect(platz.adjusted(1, 1, -1, -1), 4, 4);
    }
    maler.setPen(KastenFarben::Tinte);
    maler.setFont(schrift);
    maler.drawText(platz, Qt::AlignCenter, text());
}

Rahmen::Rahmen(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Rahmen::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setBrush(Qt::NoBrush);
    const QRectF mitte = QRectF(rect()).adjusted(3, 3, -3, -3);
    maler.setPen(QPen(KastenFarben::Papier, 6));
    maler.drawRoundedRect(mitte, 6, 6);
    maler.setPen(QPen(Farben::VollstesFach, 3));
    maler.drawRoundedRect(mitte, 6, 6);
}

Zettel::Zettel(QWidget *parent) : QLabel(parent)
{
    setAlignment(Qt::AlignCenter);
    QPalette farben = palette();
    farben.setColor(QPalette::WindowText, KastenFarben::Tinte);
    setPalette(farben);
}

void Zettel::SetTun(std::function<void()> tun)
{
    tun_ = std::move(tun);
    if (tun_)
        setCursor(Qt::PointingHandCursor);
    else
        setCursor(Qt::ArrowCursor);
}

void Zettel::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    const auto tun = tun_; // it may take the note away
    if (tun && event->button() == Qt::LeftButton && rect().contains(event->pos()))
        tun();
}

void Zettel::paintEvent(QPaintEvent *event)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    const QRectF papier = QRectF(rect()).adjusted(2, 2, -2, -6);
    maler.setBrush(QColor(0, 0, 0, 60));
    maler.drawRoundedRect(papier.translated(0, 4), 10, 10);
    maler.setBrush(KastenFarben::Papier);
    maler.drawRoundedRect(papier, 10, 10);
    maler.setPen(QPen(KastenFarben::Koralle, 2.5, Qt::SolidLine, Qt::RoundCap));
    maler.drawLine(papier.topLeft() + QPointF(16, 14), papier.topRight() + QPointF(-16, 14));
    maler.end();
    QLabel::paintEvent(event);
}

} // namespace paukfix
