// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Antwortfeld.h"

#include "Fensterbau.h"
#include "Hausfarben.h"
#include "Schriftgrade.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>

namespace paukfix {

using namespace Qt::StringLiterals;

Antwortfeld::Antwortfeld(QWidget *parent) : Flaeche(parent), leer_(new QLabel(u"leer"_s, this))
{
    leer_->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    leer_->setAttribute(Qt::WA_TransparentForMouseEvents);
    leer_->hide();
    FarbenSetzen();
}

void Antwortfeld::SetLeer(bool leer)
{
    leer_->setVisible(leer);
    leer_->raise();
}

void Antwortfeld::resizeEvent(QResizeEvent *event)
{
    Flaeche::resizeEvent(event);
    leer_->setGeometry(14, 0, leer_->sizeHint().width(), height());
}

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
    Faerben(leer_, {{QPalette::WindowText, HausfarbenZu(palette()).leiseTinte}});
}

void Antwortfeld::changeEvent(QEvent *event)
{
    Flaeche::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && leer_)
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
