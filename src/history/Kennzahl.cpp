// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kennzahl.h"

#include "Farben.h"
#include "Hausfarben.h"
#include "Schriftgrade.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

constexpr int Rand = 16; // device-independent pixels, left and right; less where there is little room

} // namespace

Kennzahl::Kennzahl(QWidget *parent) : QLabel(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setTextFormat(Qt::PlainText);
}

void Kennzahl::Zeigen(const Kennzahltext &text)
{
    text_ = text;
    setText(text.zahl + u' ' + text.worte);
    setToolTip(QLabel::text()); // a narrow card may show its beginning only
}

void Kennzahl::SetFlach(bool flach)
{
    flach_ = flach;
    updateGeometry();
    update();
}

QFont Kennzahl::Zahlschrift() const
{
    QFont schrift = Schriftgrad::In(font(), flach_ ? Schriftgrad::Gross : Schriftgrad::Anzeige);
    schrift.setWeight(QFont::DemiBold);
    return schrift;
}

int Kennzahl::Textbreite() const
{
    const double zahl = QFontMetricsF(Zahlschrift()).horizontalAdvance(text_.zahl);
    const QFont worte = Schriftgrad::In(font(), Schriftgrad::Klein);
    return static_cast<int>(std::ceil(std::max(zahl, QFontMetricsF(worte).horizontalAdvance(text_.worte)))) +
           2 * Rand;
}

QSize Kennzahl::sizeHint() const
{
    const double zahl = QFontMetricsF(Zahlschrift()).height();
    const double worte = QFontMetricsF(Schriftgrad::In(font(), Schriftgrad::Klein)).height();
    return {fontMetrics().height() * 12, static_cast<int>(std::ceil(flach_ ? zahl + 8 : zahl + worte + 16))};
}

QSize Kennzahl::minimumSizeHint() const
{
    return {fontMetrics().height() * 8, sizeHint().height()};
}

void Kennzahl::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = HausfarbenZu(palette());
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Farben::Getoent(farben.tinte, farben.karte, 0.15));
    maler.setBrush(farben.karte);
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);

    const auto zeile = [&](const QRectF &platz, const QFont &schrift, const QColor &farbe,
                           const QString &text) {
        maler.setFont(schrift);
        maler.setPen(farbe);
        const QString gekuerzt = QFontMetricsF(schrift).elidedText(text, Qt::ElideRight, platz.width());
        maler.drawText(platz, Qt::AlignLeft | Qt::AlignVCenter, gekuerzt);
        return QFontMetricsF(schrift).horizontalAdvance(gekuerzt);
    };
    const QFont zahl = Zahlschrift();
    const QFont worte = Schriftgrad::In(font(), Schriftgrad::Klein);
    QRectF platz = QRectF(rect()).adjusted(flach_ ? Rand / 2 : Rand, flach_ ? 0 : 8,
                                           flach_ ? -Rand / 2 : -Rand, flach_ ? 0 : -8);
    if (flach_) {
        platz.setLeft(platz.left() + zeile(platz, zahl, farben.tinte, text_.zahl) + Rand / 2.0);
        zeile(platz, worte, farben.leiseTinte, text_.worte);
        return;
    }
    const double hoehe = QFontMetricsF(zahl).height();
    zeile({platz.left(), platz.top(), platz.width(), hoehe}, zahl, farben.tinte, text_.zahl);
    zeile(platz.adjusted(0, hoehe, 0, 0), worte, farben.leiseTinte, text_.worte);
}

} // namespace paukfix
