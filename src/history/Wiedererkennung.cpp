// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wiedererkennung.h"

namespace paukfix {

namespace {

// Shares of equal cards. At its own place a box may change more than one that turns up elsewhere.
constexpr double SicherAmOrt = 0.5;
constexpr double VielleichtAmOrt = 0.1;
constexpr double SicherAnderswo = 0.8;
constexpr double VielleichtAnderswo = 0.3;
constexpr int SicherAbKarten = 5; // fewer cards can be alike by chance

} // namespace

Wiedererkennung Wiedererkennen(const std::vector<BekannteBox> &bekannte, const QString &pfad,
                               const Kartenabdruck &abdruck,
                               const std::function<bool(const QString &pfad)> &liegtNoch)
{
    Wiedererkennung amOrt;
    const BekannteBox *beste = nullptr;
    Kartenabdruck::Vergleich bester;
    for (const BekannteBox &box : bekannte) {
        const Kartenabdruck::Vergleich vergleich = box.abdruck.Mit(abdruck);
        if (box.dort && box.pfad == pfad) {
            if (box.abdruck.IstLeer() || abdruck.IstLeer() || vergleich.anteil >= SicherAmOrt)
                return {box.nummer, {}};
            if (vergleich.anteil >= VielleichtAmOrt)
                amOrt.vielleicht = box.nummer;
        } else if (vergleich.anteil > bester.anteil ||
                   (vergleich.anteil == bester.anteil && vergleich.gleiche > bester.gleiche)) {
            beste = &box;
            bester = vergleich;
        }
    }
    if (!beste || bester.anteil < VielleichtAnderswo)
        return amOrt;
    const bool verlassen = !beste->dort || !liegtNoch(beste->pfad);
    if (verlassen && bester.anteil >= SicherAnderswo && bester.gleiche >= SicherAbKarten)
        return {beste->nummer, {}};
    return amOrt.vielleicht ? amOrt : Wiedererkennung{{}, beste->nummer};
}

} // namespace paukfix
