// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QStringList>
#include <QWidget>

namespace paukfix {

// A sheet that keeps the texts which are painted on it, and nothing else.
class Mitschreiber final : public QPaintDevice
{
public:
    explicit Mitschreiber(QSize groesse) : groesse_(groesse) {}

    QPaintEngine *paintEngine() const override { return &stift_; }

    // In the order in which they were painted; one may come in pieces.
    QStringList Texte() const { return stift_.texte; }

protected:
    int metric(PaintDeviceMetric was) const override
    {
        switch (was) {
        case PdmWidth:
            return groesse_.width();
        case PdmHeight:
            return groesse_.height();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        default:
            return 96; // dots per inch
        }
    }

private:
    class Stift final : public QPaintEngine
    {
    public:
        Stift() : QPaintEngine(AllFeatures) {}

        bool begin(QPaintDevice *) override { return true; }

        bool end() override { return true; }

        void updateState(const QPaintEngineState &) override {}

        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}

        void drawImage(const QRectF &, const QImage &, const QRectF &, Qt::ImageConversionFlags) override {}

        void drawPath(const QPainterPath &) override {}

        void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}

        void drawTextItem(const QPointF &, const QTextItem &stueck) override { texte << stueck.text(); }

        Type type() const override { return User; }

        QStringList texte;
    };

    QSize groesse_;
    mutable Stift stift_;
};

// The texts that the window shows, as it paints them.
inline QStringList Gemaltes(QWidget &fenster)
{
    Mitschreiber mitschreiber(fenster.size());
    fenster.render(&mitschreiber);
    return mitschreiber.Texte();
}

} // namespace paukfix
