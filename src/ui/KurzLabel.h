// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kurztext.h"

#include <QLabel>
#include <QPainter>
#include <QtMath>

namespace paukfix {

// A label that shows, of a text that is too long for it, a shorter wording where it has one, else its
// beginning, or its ends; in one line.
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

    // What says as much in fewer words; empty where there is none.
    void SetKurzform(const QString &kurzform)
    {
        kurzform_ = kurzform;
        update();
    }

    // What is left out of a text that is too long: its end, unless told.
    void SetAuslassung(Qt::TextElideMode auslassung) { auslassung_ = auslassung; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter maler(this);
        maler.setPen(palette().color(foregroundRole()));
        maler.drawText(contentsRect(), static_cast<int>(alignment()),
                       fontMetrics().elidedText(Passend(), auslassung_, contentsRect().width()));
    }

private:
    QString Gezeigt() const { return Einzeilig(Kurztext(text())); }

    QString Passend() const
    {
        const bool passt = sizeHint().width() <= width() || kurzform_.isEmpty();
        return passt ? Gezeigt() : kurzform_;
    }

    QString kurzform_;
    Qt::TextElideMode auslassung_ = Qt::ElideRight;
};

} // namespace paukfix
