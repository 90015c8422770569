// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <functional>

namespace paukfix {

// What the menu opens beyond the main window. An entry without its function stands in its place, disabled.
struct LBoxFenster
{
    std::function<void()> MKarten; // the card editor, on the current card, not modal
    std::function<void()> Manzeigen;
    std::function<void()> MSicherungen;
    std::function<void()> MAscii_Export, MAscii_Import;
    std::function<void()> MFremdeKartei, MKartei_ausgeben;
    std::function<void()> MThema_ausfiltern, MKartei_anhängen, MKartei_spiegeln, MKartei_packen;
    std::function<void()> MAlleNeu, MErledigtNeu;
    std::function<void()> MStatistik;
    std::function<void()> MVerlauf;
    std::function<void()> MHandbuch, MTasten;
    std::function<void()> Müber;
    using Einlesefenster = std::function<void(const QString &pfad)>;
    // Reads in the deck of another program that was dropped or named at the start.
    Einlesefenster FremdeKartei;
    // Reads a list that was dropped into the open box.
    Einlesefenster AsciiImport;
    // Lets the user pick a card file of KarteiPfad; returns its name without directory, or nothing.
    std::function<QString()> KarteiWechseln;
    // Asked before the main window closes, so that other windows can close first; false keeps it open.
    std::function<bool()> DarfSchliessen;
};

} // namespace paukfix
