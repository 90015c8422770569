// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

#include <functional>

namespace paukfix {

// The pictures of a story as a row of dots: the filled one is shown, a click asks for another.
class Bildpunkte final : public QWidget
{
public:
    Bildpunkte(int anzahl, QWidget *parent);

    // Pictures are counted from 0.
    std::function<void(int bild)> Gewaehlt = [](int) {};

    void SetBild(int bild);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPointF Mitte(int bild) const;

    int anzahl_;
    int bild_ = 0;
};

} // namespace paukfix
