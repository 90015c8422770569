// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

namespace paukfix {

// A card's picture over all of the window, until the next key or click.
class GrossesBild final : public QWidget
{
public:
    explicit GrossesBild(QWidget *fenster);

    // Takes the keyboard and gives it back when it goes.
    void Zeigen(const QImage &bild);
    // How large a picture it can show, in pixels of the screen.
    QSize Platz() const;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *fenster, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void Schliessen();

    QImage bild_;
    QPixmap skaliert_;         // bild_ in the present size
    QPointer<QWidget> vorher_; // what had the keyboard
};

} // namespace paukfix
