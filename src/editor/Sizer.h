// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

#include <functional>

namespace paukfix {

// The handle at the lower right corner of the card's picture.
class Sizer final : public QWidget
{
public:
    explicit Sizer(QWidget *parent);

    std::function<void()> gegriffen = [] {};
    // Called while the handle is dragged, with the position it is to have; it does not move by itself.
    std::function<void(QPoint neu)> gezogen = [](QPoint) {};
    std::function<void()> losgelassen = [] {};

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPoint griff_; // where on the handle the mouse took hold
};

} // namespace paukfix
