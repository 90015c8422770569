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
    // Paints the card at `zeit` (0 to 1) of its flight: it rises out of the cards at `von`, which is a place
    // on its parent, flies above them, and slips into compartment `ziel` at the back.
    void Fliegen(QPoint von, int ziel, double zeit);
    // After the places have changed.
    void Anordnen(const QFont &klein, const QFont &gross);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const KastenMasse &masse_;
    QPointF liegt_; // twips
    QLabel *frageNr_ = nullptr;
    QLabel *mFrageNr_ = nullptr;
};

} // namespace paukfix
