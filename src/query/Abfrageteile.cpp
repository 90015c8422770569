// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Abfrageteile.h"

#include "Hausfarben.h"

#include <QFontInfo>

namespace paukfix {

namespace {

constexpr double Standardgroesse = 10; // points

} // namespace

QLabel *Beschriftung(QWidget *eltern, const QString &text)
{
    auto *label = new QLabel(text, eltern);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Schriftgrad::In(eltern->font(), Schriftgrad::Klein));
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

void HalbfettSetzen(QWidget *widget)
{
    QFont schrift = widget->font();
    schrift.setWeight(QFont::DemiBold);
    widget->setFont(schrift);
}

double Kartenfaktor(const QFont &fenster, double grad)
{
    return QFontInfo(fenster).pointSizeF() * grad / Standardgroesse;
}

QFont Kartenschrift(QFont fenster)
{
    fenster.setPointSizeF(Standardgroesse);
    return fenster;
}

QPalette Kartenpalette(const QPalette &fenster)
{
    const Hausfarben &farben = HausfarbenZu(fenster);
    QPalette palette = fenster;
    for (const auto gruppe : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(gruppe, QPalette::Window, farben.karte);
        palette.setColor(gruppe, QPalette::Base, farben.feld);
        palette.setColor(gruppe, QPalette::WindowText, farben.tinte);
        palette.setColor(gruppe, QPalette::Text, farben.tinte);
        palette.setColor(gruppe, QPalette::PlaceholderText, farben.leiseTinte);
    }
    return palette;
}

} // namespace paukfix
