// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

namespace paukfix {

// A surface with rounded corners in the palette's colour of its background role.
class Flaeche : public QWidget
{
public:
    // Fein parts it from its ground, Feld says that something can be entered, Gestrichelt that something will
    // come, Fokus that the keyboard goes there.
    enum class Umriss
    {
        Keiner,
        Fein,
        Feld,
        Gestrichelt,
        Fokus
    };

    explicit Flaeche(QWidget *parent, QPalette::ColorRole grund = QPalette::Base);

    static constexpr qreal Radius = 8; // pixels

    void SetUmriss(Umriss umriss);

    Umriss UmrissJetzt() const { return umriss_; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Umriss umriss_ = Umriss::Keiner;
};

} // namespace paukfix
