// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Abfrageteile.h"

#include "Farben.h"

#include <QLabel>

namespace paukfix {

void TextFaerben(QWidget *widget, const QColor &farbe)
{
    Faerben(widget, {{widget->foregroundRole(), farbe}});
}

void UmrissFaerben(QWidget *knopf)
{
    const QPalette farben = knopf->palette();
    Faerben(knopf,
            {{QPalette::Window, UmrissGrund(farben.color(QPalette::Text), farben.color(QPalette::Base))}});
}

QLabel *Beschriftung(QWidget *eltern, const QString &text)
{
    auto *label = new QLabel(text, eltern);
    label->setTextFormat(Qt::PlainText);
    Schriftgroesse(label, 0.9);
    return label;
}

void LeiseFaerben(QLabel *label, const QColor &grund)
{
    TextFaerben(label, Farben::Leise(label->parentWidget()->palette().color(QPalette::WindowText), grund));
}

} // namespace paukfix
