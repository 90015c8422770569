// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KastenMasse.h"

#include <QObject>

#include <array>

class QWidget;

namespace paukfix {

class FachBild;
class KaShape;
class Rahmen;
class Schild;

// What of the compartments lies over the drawn box: their insides, bars and names, the lines on the walls,
// and the border around the fullest.
class Fachreihe final : public QObject
{
    Q_OBJECT

public:
    // Its controls are made on `kasten`, which must outlive it.
    explicit Fachreihe(QWidget &kasten);

    // Puts everything where `masse` says.
    void Anordnen(const KastenMasse &masse);
    // Shows the counts. Without an open file no compartment is marked as the fullest.
    void Zeigen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse, bool offen);

    // How far the cards of each compartment stand, in pixels.
    const std::array<int, FachSichtbar> &Fuellung() const { return fuellung_; }

    // What the cards of compartment `fach` have in common.
    static const QString &Erklaerung(int fach);

signals:
    void Gewaehlt(int fach);

protected:
    // Name and count belong to the compartment: the narrow ones are easier to hit that way.
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    int FachBei(QPoint punkt) const;
    void Hervorheben(int fach);
    void LinienLegen(const KastenMasse &masse);
    void BalkenSetzen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse);
    void VollstesMarkieren(int fach, bool offen);
    void NamenSetzen(const FachTabelle &tabelle, const BoxBild &bild, bool offen);

    QWidget &kasten_;
    std::array<QRect, FachSichtbar> fuesse_;  // on the near wall, below each compartment
    std::array<QString, FachSichtbar> stand_; // its count, in words
    std::array<int, FachSichtbar> fuellung_{};
    std::array<QWidget *, 10> line_{}; // on the walls: sides and floors of the trays, dividers between
    std::array<FachBild *, FachSichtbar> image0_{};
    std::array<KaShape *, FachSichtbar> kaShape_{};
    std::array<Schild *, FachSichtbar> schild_{};
    Rahmen *rahmen_ = nullptr;
};

} // namespace paukfix
