// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BildKnopf.h"

#include <QColor>

namespace paukfix {

// The die on the main window. It is pressed for a random pick.
class WuerfelBild final : public BildKnopf
{
public:
    explicit WuerfelBild(QWidget *parent);

    // Draws the pips of a face, 1 to 6.
    void WuerfelZeichnen(int augen);
    // Takes the pips away.
    void Leeren();
    void SetGrund(const QColor &farbe);

    int Augen() const { return augen_; } // 0 when it is empty

    const QColor &Grund() const { return grund_; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int augen_ = 0;
    QColor grund_{255, 255, 255};
};

} // namespace paukfix
