// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLabel>
#include <QPalette>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <initializer_list>
#include <type_traits>

namespace paukfix {

// What all windows are built with.

// Gives a control the name that tests find it by, and the one that a screen reader says. A label is read by
// its text; the name, which would replace it, is said after it.
template <typename Widget>
Widget *Benannt(Widget *widget, const QString &name, const QString &zugaenglich)
{
    widget->setObjectName(name);
    if constexpr (std::is_base_of_v<QLabel, Widget>)
        widget->setAccessibleDescription(zugaenglich);
    else
        widget->setAccessibleName(zugaenglich);
    return widget;
}

// Member `index` of a row of controls: "Antwort(0)".
QString Name(const char *feld, std::size_t index);

// A label whose mnemonic leads to `ziel`.
QLabel *Beschriftung(const QString &text, QWidget *ziel, QWidget *eltern);

// The font of what the control stands on, `faktor` times as large; however large it was made since.
void Schriftgroesse(QWidget *widget, double faktor);

// What is hidden for a while keeps its place, so that nothing jumps.
void PlatzHalten(QWidget *widget);

// Sets these colours; all others keep following the desktop.
struct Farbrolle
{
    QPalette::ColorRole rolle = QPalette::NoRole;
    QColor farbe;
};

void Faerben(QWidget *widget, std::initializer_list<Farbrolle> farben);

// What a tick box, option or entry field takes for the window's ground. The style draws their outlines as a
// darker shade of it; on a dark one they could not be seen.
QColor UmrissGrund(const QColor &text, const QColor &grund);

} // namespace paukfix
