// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fensterbau.h"

#include "Farben.h"

#include <QLabel>

namespace paukfix {

using namespace Qt::StringLiterals;

QString Name(const char *feld, std::size_t index)
{
    return u"%1(%2)"_s.arg(QString::fromUtf8(feld)).arg(index);
}

QLabel *Beschriftung(const QString &text, QWidget *ziel, QWidget *eltern)
{
    auto *label = new QLabel(text, eltern);
    label->setBuddy(ziel);
    return label;
}

void Schriftgroesse(QWidget *widget, double faktor)
{
    QFont schrift = widget->parentWidget()->font();
    schrift.setPointSizeF(schrift.pointSizeF() * faktor);
    widget->setFont(schrift);
}

void PlatzHalten(QWidget *widget)
{
    QSizePolicy regel = widget->sizePolicy();
    regel.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(regel);
}

void Faerben(QWidget *widget, std::initializer_list<Farbrolle> farben)
{
    QPalette palette;
    for (const Farbrolle &farbe : farben)
        palette.setColor(farbe.rolle, farbe.farbe);
    widget->setPalette(palette);
}

QColor UmrissGrund(const QColor &text, const QColor &grund)
{
    return Farben::Lesbar(Farben::Getoent(text, grund, 0.25), grund, Farben::KontrastUmriss + 1).lighter(140);
}

} // namespace paukfix
