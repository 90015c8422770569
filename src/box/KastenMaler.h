// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KastenMasse.h"

#include <QPainter>
#include <QWidget>

namespace paukfix {

// Paints what of the box is no widget: the trays, the cards, the counts, the name of the die's key.
class KastenMaler
{
public:
    // What is to be seen.
    struct Ansicht
    {
        const FachTabelle &tabelle;
        std::array<int, FachSichtbar> fuellung{}; // pixels
        int unterwegs = -1;                       // the compartment whose front card is in the air
        std::array<bool, FachAnzahl> tickt{};     // counts that have just changed
    };

    // `palette` is that of the window around the box. All must outlive it.
    KastenMaler(QPainter &maler, const QPalette &palette, const KastenMasse &masse)
        : maler_(maler), palette_(palette), masse_(masse)
    {
    }

    void Malen(const Ansicht &ansicht);

    // Makes the font smaller until `text` is no wider than `breite`.
    static QFont Passend(QFont schrift, const QString &text, int breite);

private:
    struct Farben
    {
        QColor vorn, innen, seite, boden, kante;
    };

    void Schatten(const KastenMasse::Wanne &wanne);
    void Hinten(const KastenMasse::Wanne &wanne, const Farben &farben);
    void Vorn(const KastenMasse::Wanne &wanne, const Farben &farben);
    void Trennwand(int links, int rechts);
    void Karten(std::size_t fach, const Ansicht &ansicht);
    void Stapel(int anzahl);
    void Zaehler(const QRect &platz, const Fach &fach, bool mitKapazitaet, bool tickt);
    void Zahl(const QRect &zeile, const QString &text, const QFont &schrift, bool warnung);
    void Taste();

    QPainter &maler_;
    const QPalette &palette_;
    const KastenMasse &masse_;
};

} // namespace paukfix
