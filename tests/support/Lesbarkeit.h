// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Farben.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QTextEdit>
#include <QWidget>

#include <algorithm>

namespace paukfix {

// The desktop's colours for as long as it lives.
class Schreibtisch
{
public:
    explicit Schreibtisch(bool dunkel) : vorher_(QApplication::palette())
    {
        QPalette farben(dunkel ? QColor(0x23, 0x25, 0x29) : QColor(0xF0, 0xF0, 0xEF));
        const QColor text = dunkel ? QColor(0xEC, 0xEA, 0xF0) : QColor(0x24, 0x23, 0x2E);
        for (const auto rolle : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            farben.setColor(rolle, text);
        QApplication::setPalette(farben);
    }

    Schreibtisch(const Schreibtisch &) = delete;
    Schreibtisch &operator=(const Schreibtisch &) = delete;

    ~Schreibtisch() { QApplication::setPalette(vorher_); }

private:
    QPalette vorher_;
};

// The place of a control on its window.
inline QRect Auf(const QWidget *fenster, const QWidget *teil)
{
    return {teil->mapTo(fenster, QPoint()), teil->size()};
}

// The ground of a piece of a picture, and the best contrast that anything on it has.
struct Lesbarkeit
{
    Lesbarkeit(const QImage &bild, const QRect &teil)
    {
        const QRect platz = teil & bild.rect();
        QHash<QRgb, int> farben;
        for (int y = platz.top(); y <= platz.bottom(); ++y)
            for (int x = platz.left(); x <= platz.right(); ++x)
                ++farben[bild.pixel(x, y)];
        for (auto farbe = farben.cbegin(); farbe != farben.cend(); ++farbe)
            if (farbe.value() > farben.value(grund.rgb()))
                grund = QColor(farbe.key());
        for (auto farbe = farben.cbegin(); farbe != farben.cend(); ++farbe)
            kontrast = std::max(kontrast, Farben::Kontrast(QColor(farbe.key()), grund));
    }

    QColor grund{1, 2, 3};
    double kontrast = 1;
};

// Whether a person is to read the control, or to tell its icon.
inline bool HatText(const QWidget *teil)
{
    if (const auto *label = qobject_cast<const QLabel *>(teil))
        return !label->text().trimmed().isEmpty();
    if (const auto *knopf = qobject_cast<const QAbstractButton *>(teil))
        return !knopf->text().isEmpty() || !knopf->icon().isNull();
    if (const auto *zeile = qobject_cast<const QLineEdit *>(teil))
        return !zeile->text().isEmpty();
    if (const auto *feld = qobject_cast<const QTextEdit *>(teil))
        return !feld->document()->isEmpty();
    if (const auto *wahl = qobject_cast<const QComboBox *>(teil))
        return !wahl->currentText().isEmpty();
    if (const auto *liste = qobject_cast<const QAbstractItemView *>(teil))
        return liste->model() && liste->model()->rowCount() > 0;
    if (const auto *gruppe = qobject_cast<const QGroupBox *>(teil))
        return !gruppe->title().isEmpty();
    return false;
}

// What of the window's enabled texts and icons cannot be read in its picture, each by its name and contrast.
// Those that lie under something else, or out of their view, are not looked at; `gesehen` counts the others.
inline QStringList Unlesbar(QWidget &fenster, int &gesehen)
{
    const QImage bild = fenster.grab().toImage();
    QStringList unlesbar;
    gesehen = 0;
    for (const QWidget *teil : fenster.findChildren<QWidget *>()) {
        const QRect platz = Auf(&fenster, teil);
        if (!teil->isVisible() || !teil->isEnabled() || !HatText(teil) || teil->visibleRegion().isEmpty() ||
            platz.width() < 8 || platz.height() < 8)
            continue;
        const QRect sichtbar = teil->visibleRegion().boundingRect().translated(platz.topLeft());
        // Within the control's own outline.
        const Lesbarkeit text(bild, sichtbar.adjusted(5, 4, -5, -4));
        ++gesehen;
        if (text.kontrast < Farben::KontrastText)
            unlesbar << QString("%1 %2").arg(teil->objectName()).arg(text.kontrast);
    }
    return unlesbar;
}

// The contrast of a control's outline with what lies beside it: in a strip across its left edge, at half
// height.
inline double Umriss(const QImage &bild, const QRect &platz)
{
    const QPoint links(platz.left(), platz.center().y());
    const QColor grund = bild.pixelColor(std::max(0, links.x() - 6), links.y());
    double kontrast = 1;
    for (int x = std::max(0, links.x() - 4); x <= links.x() + 4; ++x)
        kontrast = std::max(kontrast, Farben::Kontrast(bild.pixelColor(x, links.y()), grund));
    return kontrast;
}

} // namespace paukfix
