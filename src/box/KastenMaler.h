// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KastenMasse.h"

#include <QFont>
#include <QPainter>
#include <QWidget>

namespace paukfix {

// Paints what of the box is no widget: the trays, the counts, the pile of done cards, the name of the die's
// key.
class KastenMaler
{
public:
    // Few sizes: each costs a part of the program's start.
    static constexpr double Gross = 1.15, Klein = 0.9;

    // `maler` paints on `kasten`; all must outlive it.
    KastenMaler(QPainter &maler, const QWidget &kasten, const KastenMasse &masse)
        : maler_(maler), kasten_(kasten), masse_(masse)
    {
    }

    void Malen(const FachTabelle &tabelle);

    // `schrift` larger in a large box, though not as much as the box. `groesse` is a share of it.
    static QFont Schrift(const QFont &schrift, const KastenMasse &masse, double groesse, bool fett = false);

private:
    QFont Schrift(double groesse, bool fett = false) const;
    void ZaehlerMalen(const QRect &platz, const Fach &fach, bool mitKapazitaet);
    void TasteMalen();
    void StapelMalen(const Fach &fach);
    void WarnungMalen(const QRect &platz);

    QPainter &maler_;
    const QWidget &kasten_;
    const KastenMasse &masse_;
};

} // namespace paukfix
