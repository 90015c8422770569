// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

namespace paukfix {

// The left edge of the card in the verdict's colour (the palette's Window), with a thin line of the text's
// colour beside it. `Deckung` goes from 0 to 1 while it appears.
class Urteilskante final : public QWidget
{
public:
    static constexpr int Breite = 10; // of the colour

    explicit Urteilskante(QWidget *karte);

    void SetDeckung(double deckung);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double deckung_ = 1;
};

} // namespace paukfix
