// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BildKnopf.h"

namespace paukfix {

// The fill bar of a compartment: so wide do its cards stand on the floor. They are drawn with the box.
class KaShape final : public QWidget
{
public:
    explicit KaShape(QWidget *parent);
};

// The inside of a compartment, which is pressed to ask its first card: what lies over the drawn box.
class FachBild final : public BildKnopf
{
public:
    explicit FachBild(QWidget *parent);

    // The compartment lights up while the mouse is on it, its name or its count.
    void SetHervorgehoben(bool an);
    // What is framed from its upper end `oben` on: as high as what is drawn there. Where no file is open it
    // does not light up.
    void SetRahmen(int oben, bool offen);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool hervorgehoben_ = false;
    bool offen_ = false;
    int oben_ = 0;
};

} // namespace paukfix
