// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formulardruck.h"

#include <QPicture>
#include <QWidget>

#include <algorithm>

namespace paukfix {

void FormularDrucken(QWidget &formular, QPrinter &drucker)
{
    constexpr double PixelJeZoll = 96; // logical pixels: 15 twips each
    // By way of a picture: straight to a printer a widget is painted as a bitmap, and its text with it.
    QPicture bild;
    {
        QPainter maler(&bild);
        formular.render(&maler, {}, {}, QWidget::DrawWindowBackground | QWidget::DrawChildren);
    }
    Druckauftrag auftrag(drucker);
    const QSizeF blatt = drucker.pageLayout().paintRectPixels(drucker.resolution()).size();
    const double massstab = std::min({drucker.resolution() / PixelJeZoll, blatt.width() / formular.width(),
                                      blatt.height() / formular.height()});
    // A picture that is played comes in its own size on paper already.
    const double gespielt = massstab * bild.logicalDpiX() / drucker.resolution();
    auftrag.Maler().scale(gespielt, gespielt);
    auftrag.Maler().drawPicture(0, 0, bild);
    auftrag.Abschicken();
}

} // namespace paukfix
