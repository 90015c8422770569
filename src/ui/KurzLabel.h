// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kurztext.h"

#include <QLabel>
#include <QPainter>
#include <QtMath>

namespace paukfix {

// A label that shows the beginning of a text that is too long for it, in one line.
class KurzLabel final : public QLabel
{
public:
    using QLabel::QLabel;

    QSize sizeHint() const override
    {
        const QMargins rand = contentsMargins() + margin();
        // Rounded up: a text that lacks a fraction of a pixel is cut.
        return {qCeil(QFontMetricsF(font()).horizontalAdvance(Gezeigt())) + rand.left() + rand.right(),
                fontMetrics().height() + rand.top() + rand.bottom()};
    }

    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter maler(this);
        maler.setPen(palette().color(foregroundRole()));
        maler.drawText(contentsRect(), static_cast<int>(alignment()),
                       fontMetrics().elidedText(Gezeigt(), Qt::ElideRight, contentsRect().width()));
    }

private:
    QString Gezeigt() const { return Einzeilig(Kurztext(text())); }
};

} // namespace paukfix
