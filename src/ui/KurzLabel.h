// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLabel>
#include <QPainter>

// A label that shows the beginning of a text that is too long for it.
class KurzLabel final : public QLabel
{
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter maler(this);
        maler.setPen(palette().color(foregroundRole()));
        maler.drawText(contentsRect(), static_cast<int>(alignment()),
                       fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
    }
};
