// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StatistikBalken.h"

#include "Farben.h"

#include <QPainter>

#include <algorithm>

namespace paukfix {

StatistikBalken::StatistikBalken(std::optional<int> beginn, std::optional<int> jetzt, int hoechstens,
                                 QWidget *parent)
    : QWidget(parent), beginn_(beginn), jetzt_(jetzt), hoechstens_(hoechstens)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize StatistikBalken::sizeHint() const
{
    return {fontMetrics().height() * 12, fontMetrics().height()};
}

QSize StatistikBalken::minimumSizeHint() const
{
    return {fontMetrics().height(), fontMetrics().height()};
}

void StatistikBalken::paintEvent(QPaintEvent *)
{
    const QColor grund = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor voll = Farben::Lesbar(palette().color(QPalette::Highlight), grund, Farben::KontrastUmriss);
    const double hoehe = std::min(fontMetrics().height() * 0.42, height() / 2.0 - 2);
    const double mitte = height() / 2.0;

    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const auto balken = [&](std::optional<int> anzahl, double oben) {
        // A single card among thousands is still to be seen.
        if (anzahl && *anzahl > 0)
            maler.drawRect(QRectF(1, oben, std::max(3.0, (width() - 2.0) * *anzahl / hoechstens_), hoehe));
    };
    maler.setPen(QPen(Farben::Getoent(text, grund, 0.75), 1.2));
    // A bar alone, as in the legend, stands in the middle.
    balken(beginn_, jetzt_ ? mitte - hoehe - 0.5 : mitte - hoehe / 2);
    maler.setPen(Qt::NoPen);
    maler.setBrush(voll);
    balken(jetzt_, beginn_ ? mitte + 0.5 : mitte - hoehe / 2);
}

} // namespace paukfix
