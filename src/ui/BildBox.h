// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QImage>
#include <QMargins>
#include <QPixmap>
#include <QWidget>

#include <functional>

namespace paukfix {

// The margins that a text at `text` keeps free for a picture at `bild`, both on the same surface. The text
// stands to the left of the picture where it has a third of its width there, else to the right; where neither
// side has that much, the picture lies on the text.
QMargins RandUmBild(const QRect &text, const QRect &bild);

// A picture on a card: fits it into the box, keeping its proportions, and follows the mouse.
class BildBox final : public QWidget
{
public:
    explicit BildBox(QWidget *parent);

    void SetBild(const QImage &bild);

    const QImage &Bild() const { return bild_; }

    // Says where the box may go when it is dragged to a position; every position may be taken by default.
    std::function<QPoint(QPoint)> begrenzen = [](QPoint neu) { return neu; };
    // Called when the learner has let go of a dragged box.
    std::function<void()> gezogen = [] {};
    // Called when the box was clicked, and not dragged.
    std::function<void()> angeklickt = [] {};
    // Called when the mouse takes hold of the box, and when it lets go, dragged or not.
    std::function<void()> gegriffen = [] {};
    std::function<void()> losgelassen = [] {};

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QImage bild_;
    QPixmap skaliert_; // bild_ in the box's present size
    QPoint griff_;     // where on the box the mouse took hold
    bool gezogen_ = false;
};

} // namespace paukfix
