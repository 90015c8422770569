// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KastenMasse.h"

#include <QColor>
#include <QFrame>

class QLabel;

namespace paukfix {

// The card that is asked, with the label "FrageNr:" and its number, on its way over the box.
class Kartenrahmen final : public QFrame
{
public:
    // Places are those of `masse`, which must outlive it.
    Kartenrahmen(const KastenMasse &masse, QWidget *parent);

    // Shows the card with its number, its left top corner at these twips.
    void Legen(const QString &frageNr, double links, double oben);
    void SetFarbe(const QColor &farbe);
    // Paints the card at `anteil` (0 to 1) of its way from where it lies to compartment `ziel`.
    void Fliegen(int ziel, double anteil);
    // After the places have changed.
    void Anordnen(const QFont &klein, const QFont &gross);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const KastenMasse &masse_;
    QPointF von_; // twips
    QLabel *frageNr_ = nullptr;
    QLabel *mFrageNr_ = nullptr;
};

} // namespace paukfix
