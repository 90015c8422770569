// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Achsen.h"
#include "Verlaufswerte.h"

#include <QWidget>

namespace paukfix {

struct Hausfarben;

// A picture over days: a card with its title, a field that two of them share from left to right, and names
// at its right end. Read by a screen reader in words.
class Diagramm : public QWidget
{
public:
    explicit Diagramm(QWidget *parent);

    void Zeigen(const Verlaufswerte &werte);
    // Whether the days are named below.
    void SetMitTagen(bool mit);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    virtual QString Titel() const = 0;
    virtual QString InWorten() const = 0;
    // What a day shows, for the mouse.
    virtual QString TagInWorten(int tag) const = 0;
    virtual void Malen(QPainter &maler, const QRectF &feld) const = 0;

    const Verlaufswerte &Werte() const { return werte_; }

    Zeitachse Tage() const { return {static_cast<int>(werte_.tage.size())}; }

    const Hausfarben &Farbsatz() const;
    QFont KleineSchrift() const;
    // How many values can be named one below the other.
    int MeisteMarken(const QRectF &feld) const;
    // The lines of the scale with their numbers, below what is painted next.
    void SkalaMalen(QPainter &maler, const QRectF &feld, const Wertachse &achse) const;
    // Right of the field, centred at `y`.
    void NameMalen(QPainter &maler, const QRectF &feld, double y, const QString &text,
                   const QColor &farbe) const;

private:
    QRectF Feld() const;
    void TageMalen(QPainter &maler, const QRectF &feld) const;

    Verlaufswerte werte_;
    bool mitTagen_ = true;
};

// Answers right (up) and wrong (down) from one line.
class Antwortbild final : public Diagramm
{
public:
    using Diagramm::Diagramm;

protected:
    QString Titel() const override;
    QString InWorten() const override;
    QString TagInWorten(int tag) const override;
    void Malen(QPainter &maler, const QRectF &feld) const override;
};

// The cards of the seven compartments one above the other, done ones at the ground.
class Faecherbild final : public Diagramm
{
public:
    using Diagramm::Diagramm;

protected:
    QString Titel() const override;
    QString InWorten() const override;
    QString TagInWorten(int tag) const override;
    void Malen(QPainter &maler, const QRectF &feld) const override;

private:
    void NamenMalen(QPainter &maler, const QRectF &feld, const Wertachse &achse) const;
};

} // namespace paukfix
