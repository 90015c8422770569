// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPointer>
#include <QProxyStyle>

class QFocusFrame;

namespace paukfix {

// The program's own drawing of buttons, fields, lists, ticks and options, in the desktop's font and palette,
// light or dark; all else is Fusion's. What has the keyboard has a ring of 2 px: fields in their outline, all
// other controls around them. Properties of a widget that it follows:
//   "leitend" (bool)      the one button of a window that comes next: honey
//   "loeschend" (bool)    a button that takes something away: red
//   "zeichenfarbe" (QColor)  of the mark and the outline of a tick box or option
//   "fokusring" (bool)    a widget that paints itself and wants the ring (true), or does without it (false)
class Hausstil final : public QProxyStyle
{
public:
    // Makes it the style of the running application.
    static void Einrichten();

    using QProxyStyle::polish;
    void polish(QPalette &palette) override;
    void polish(QWidget *widget) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl teil,
                         const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override;
    QIcon standardIcon(StandardPixmap pixmap, const QStyleOption *option,
                       const QWidget *widget) const override;

private:
    Hausstil();

    void FokusFolgen(QWidget *vorher, QWidget *jetzt);

    QPointer<QFocusFrame> ring_; // stands in the window that has the keyboard; gone with it
};

} // namespace paukfix
