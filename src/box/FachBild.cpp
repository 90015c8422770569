// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FachBild.h"

#include "KastenFarben.h"

#include <QPainter>

namespace paukfix {

KaShape::KaShape(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

FachBild::FachBild(QWidget *parent) : BildKnopf(parent)
{
    setProperty("fokusring", false); // the window's ring cannot be seen on the box
}

void FachBild::SetHervorgehoben(bool an)
{
    if (an == hervorgehoben_)
        return;
    hervorgehoben_ = an;
    update();
}

void FachBild::SetRahmen(int oben, bool offen)
{
    if (oben == oben_ && offen == offen_)
        return;
    oben_ = oben;
    offen_ = offen;
    update();
}

void FachBild::paintEvent(QPaintEvent *)
{
    const bool hell = offen_ && (hervorgehoben_ || underMouse());
    if (!isDown() && !hell && !hasFocus())
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QRect gezeichnet = rect().adjusted(0, oben_, 0, 0);
    if (isDown())
        maler.fillRect(gezeichnet, QColor(0, 0, 0, 50));
    maler.setBrush(Qt::NoBrush);
    if (hell && !hasFocus()) {
        maler.setPen(QPen(KastenFarben::Himmel, 2));
        maler.drawRoundedRect(QRectF(gezeichnet).adjusted(1, 1, -1, -1), 4, 4);
    }
    if (!hasFocus())
        return;
    // Light within dark: one of them is seen on every ground.
    maler.setPen(QPen(KastenFarben::Tinte, 6));
    maler.drawRoundedRect(QRectF(gezeichnet).adjusted(3, 3, -3, -3), 5, 5);
    maler.setPen(QPen(KastenFarben::Papier, 2));
    maler.drawRoundedRect(QRectF(gezeichnet).adjusted(3, 3, -3, -3), 4, 4);
}

} // namespace paukfix
