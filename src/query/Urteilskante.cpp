// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Urteilskante.h"

#include "Kartenflaeche.h"

#include <QPainter>
#include <QPainterPath>

namespace paukfix {

Urteilskante::Urteilskante(QWidget *karte) : QWidget(karte)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void Urteilskante::SetDeckung(double deckung)
{
    deckung_ = deckung;
    update();
}

// The corners are those of the card, whose outline stays.
void Urteilskante::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setOpacity(deckung_);
    QPainterPath karte;
    karte.addRoundedRect(QRectF(rect()).adjusted(1, 1, Kartenflaeche::Radius, -1), Kartenflaeche::Radius - 1,
                         Kartenflaeche::Radius - 1);
    maler.setClipPath(karte);
    maler.fillRect(QRect(0, 0, Breite, height()), palette().color(QPalette::Window));
    maler.fillRect(QRect(Breite, 0, 1, height()), palette().color(QPalette::WindowText));
}

} // namespace paukfix
