// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Farben.h"

#include <QColor>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QWidget>

// What the windows of the editor are built with.

template <typename Widget>
Widget *Benannt(Widget *widget, const QString &name, const QString &zugaenglich)
{
    widget->setObjectName(name);
    widget->setAccessibleName(zugaenglich);
    return widget;
}

// Member `index` of a row of controls: "Antwort(0)".
inline QString Name(const char *feld, std::size_t index)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(feld)).arg(index);
}

// A label whose mnemonic leads to `ziel`.
inline QLabel *Beschriftung(const QString &text, QWidget *ziel, QWidget *eltern)
{
    auto *label = new QLabel(text, eltern);
    label->setBuddy(ziel);
    return label;
}

// What is hidden for a while keeps its place, so that nothing jumps.
inline void PlatzHalten(QWidget *widget)
{
    QSizePolicy regel = widget->sizePolicy();
    regel.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(regel);
}

// Sets these colours; all others keep following the desktop.
struct Farbrolle
{
    QPalette::ColorRole rolle = QPalette::NoRole;
    QColor farbe;
};

inline void Faerben(QWidget *widget, std::initializer_list<Farbrolle> farben)
{
    QPalette palette;
    for (const Farbrolle &farbe : farben)
        palette.setColor(farbe.rolle, farbe.farbe);
    widget->setPalette(palette);
}

// The style draws the outlines of tick boxes, options and entry fields as a darker shade of the window's
// ground; on a dark one they could not be seen.
inline QColor UmrissGrund(const QColor &text, const QColor &grund)
{
    return Farben::Lesbar(Farben::Getoent(text, grund, 0.25), grund, Farben::KontrastUmriss + 1).lighter(140);
}
