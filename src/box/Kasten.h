// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"
#include "KastenMasse.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

#include <functional>

namespace paukfix {

class Fachreihe;
class Kartenrahmen;
class Schild;
class WuerfelBild;
class Zettel;

// The picture of the box: a drawer of cards seen from above, its compartments side by side, beside it the
// done cards, the card that is asked and the die. It shows what it is given and decides nothing.
class Kasten final : public QWidget
{
    Q_OBJECT

public:
    // Shows `tabelle`, which must outlive it.
    explicit Kasten(const FachTabelle &tabelle, QWidget *parent = nullptr);

    // Takes over the counts of the table. Painting follows with the event loop.
    void Zeigen(const BoxBild &bild);
    // The same for calls that come by the thousand while no event loop runs: shown at most at the display's
    // rate, and painted then, without taking input.
    void ZeigenLaufend(const BoxBild &bild);

    // Without an open file no compartment is marked as the fullest. Shown with the next counts.
    void SetOffen(bool offen);
    // A note across the box; none where the text is empty. `tun` is what a click on it does, if anything.
    void SetHinweis(const QString &text, std::function<void()> tun = {});

    Kartenrahmen &Karte() { return *karte_; }

    WuerfelBild &Wuerfel() { return *wuerfel_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void FachGewaehlt(int fach);
    void WuerfelGewaehlt();
    void Gemalt(); // once, when the window has been painted

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void Anordnen();
    void HinweisLegen();
    void Malen();
    int FachBei(QPoint punkt) const;
    void Hervorheben(int fach);

    const FachTabelle &tabelle_;
    BoxBild bild_;
    bool offen_ = false;
    KastenMasse masse_;
    Fachreihe *faecher_ = nullptr;
    Schild *erledigt_ = nullptr;
    Kartenrahmen *karte_ = nullptr;
    WuerfelBild *wuerfel_ = nullptr;
    Zettel *hinweis_ = nullptr;
    QElapsedTimer gezeigt_;
    QBasicTimer nachholen_;
    bool gemalt_ = false;
};

} // namespace paukfix
