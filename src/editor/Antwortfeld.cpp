// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Antwortfeld.h"

#include "Fensterbau.h"
#include "Hausfarben.h"

#include <QEvent>
#include <QPainter>

namespace paukfix {

Antwortfeld::Antwortfeld(QWidget *parent) : Flaeche(parent) {}

void Antwortfeld::SetRichtig(bool richtig)
{
    if (richtig_ == richtig)
        return;
    richtig_ = richtig;
    FarbenSetzen();
    update();
}

void Antwortfeld::FarbenSetzen()
{
    if (richtig_)
        Faerben(this, {{QPalette::Base, HausfarbenZu(palette()).richtigGrund}});
    else
        setPalette({});
}

void Antwortfeld::changeEvent(QEvent *event)
{
    Flaeche::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && richtig_)
        FarbenSetzen();
}

void Antwortfeld::paintEvent(QPaintEvent *event)
{
    Flaeche::paintEvent(event);
    if (!richtig_ || UmrissJetzt() == Umriss::Fokus)
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(HausfarbenZu(palette()).richtigText);
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}

} // namespace paukfix
