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

// The compartments of the box side by side: their insides, bars and names, the lines between them, and the
// border around the fullest.
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
    // Lights up compartment `fach` alone, or none where it is below 0.
    void Hervorheben(int fach);
    // Asks compartment `fach`, as if it was pressed.
    void Druecken(int fach);

    // What the mouse is told over compartment `fach`.
    static const QString &Erklaerung(int fach);

signals:
    void Gewaehlt(int fach);

private:
    void LinienLegen(const KastenMasse &masse);
    void BalkenSetzen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse);
    void VollstesMarkieren(int fach, bool offen);
    void NamenSetzen(const FachTabelle &tabelle, const BoxBild &bild, bool offen);

    QWidget &kasten_;
    std::array<QWidget *, 10> line_{}; // on the walls: sides and floors of the trays, dividers between
    std::array<FachBild *, FachSichtbar> image0_{};
    std::array<KaShape *, FachSichtbar> kaShape_{};
    std::array<Schild *, FachSichtbar> schild_{};
    Rahmen *rahmen_ = nullptr;
};

} // namespace paukfix
