// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BoxRechnung.h"
#include "KastenMasse.h"
#include "Kastenkopf.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPixmap>
#include <QWidget>

#include <functional>

namespace paukfix {

class Fachreihe;
class Kartenrahmen;
class Schild;
class WuerfelBild;
class Zettel;

// The picture of the box: a drawer of cards seen from the front, its compartments side by side, beside it the
// done cards, the card that is asked and the die; above it what comes next. It shows what it is given and
// decides nothing. What it has drawn it keeps, so that showing the window again costs nothing.
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
    // The same, and counts that have changed tick for a moment.
    void ZeigenTickend(const BoxBild &bild);

    // Without an open file no compartment is marked as the fullest.
    void SetZustand(Kastenkopf::Zustand zustand);
    // A note across the box; none where the text is empty. `tun` is what a click on it does, if anything.
    void SetHinweis(const QString &text, std::function<void()> tun = {});
    // The front card of compartment `fach` is in the air; none where it is below 0.
    void SetUnterwegs(int fach);
    // Where that card has left its compartment, on this widget. Only for a compartment that has cards.
    QPoint Vorderste(int fach) const;

    Kartenrahmen &Karte() { return *karte_; }

    WuerfelBild &Wuerfel() { return *wuerfel_; }

    Kastenkopf &Kopf() { return *kopf_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void FachGewaehlt(int fach);
    void WuerfelGewaehlt();
    void Gemalt(); // once, when the window has been painted

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void Anordnen();
    void HinweisLegen();
    void Malen();
    void Verwerfen();
    void BildMalen();

    const FachTabelle &tabelle_;
    BoxBild bild_;
    Kastenkopf::Zustand zustand_ = Kastenkopf::Zustand::Wartend;
    KastenMasse masse_;
    Kastenkopf *kopf_ = nullptr;
    Fachreihe *faecher_ = nullptr;
    Schild *erledigt_ = nullptr;
    Kartenrahmen *karte_ = nullptr;
    WuerfelBild *wuerfel_ = nullptr;
    Zettel *hinweis_ = nullptr;
    QPixmap gemaltes_;                          // the drawn box; null where it has to be drawn anew
    std::array<qint16, FachAnzahl> gezaehlt_{}; // the counts in it
    std::array<bool, FachAnzahl> tickt_{};
    int unterwegs_ = -1;
    QElapsedTimer gezeigt_;
    QBasicTimer nachholen_, ticken_;
    bool gemalt_ = false;
};

} // namespace paukfix
