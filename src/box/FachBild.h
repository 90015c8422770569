// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BildKnopf.h"

namespace paukfix {

// The cards of one compartment as the edges that are seen from above: its fill bar. The cards stand from its
// left to its right edge, the next one in front.
class KaShape final : public QWidget
{
public:
    explicit KaShape(QWidget *parent);

    // `anzahl` cards, which take `breite` pixels from the left.
    void SetKarten(int anzahl, int breite);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int anzahl_ = 0;
    int breite_ = 0;
};

// The inside of a compartment, which is pressed to ask its first card.
class FachBild final : public BildKnopf
{
public:
    explicit FachBild(QWidget *parent);

    // The compartment lights up while the mouse is on its name or count, too.
    void SetHervorgehoben(bool an);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool hervorgehoben_ = false;
};

} // namespace paukfix
