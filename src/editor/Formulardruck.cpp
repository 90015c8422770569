// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formulardruck.h"

#include "StoreError.h"

#include <QPainter>
#include <QPicture>
#include <QPrinterInfo>
#include <QWidget>

#include <algorithm>

std::unique_ptr<QPrinter> Standarddrucker()
{
    // A QPrinter without a printer would quietly write a file.
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        const QStringList namen = QPrinterInfo::availablePrinterNames();
        if (namen.isEmpty())
            return nullptr;
        info = QPrinterInfo::printerInfo(namen.front());
    }
    return std::make_unique<QPrinter>(info, QPrinter::HighResolution);
}

void FormularDrucken(QWidget &formular, QPrinter &drucker)
{
    constexpr double PixelJeZoll = 96; // logical pixels: 15 twips each
    constexpr int GeraetFehlt = 57;
    // By way of a picture: straight to a printer a widget is painted as a bitmap, and its text with it.
    QPicture bild;
    {
        QPainter maler(&bild);
        formular.render(&maler, {}, {}, QWidget::DrawWindowBackground | QWidget::DrawChildren);
    }
    QPainter maler;
    if (!maler.begin(&drucker))
        throw StoreError(GeraetFehlt, QStringLiteral("Der Drucker nimmt nichts an."));
    const QSizeF blatt = drucker.pageLayout().paintRectPixels(drucker.resolution()).size();
    const double massstab = std::min({drucker.resolution() / PixelJeZoll, blatt.width() / formular.width(),
                                      blatt.height() / formular.height()});
    // A picture that is played comes in its own size on paper already.
    const double gespielt = massstab * bild.logicalDpiX() / drucker.resolution();
    maler.scale(gespielt, gespielt);
    maler.drawPicture(0, 0, bild);
}
