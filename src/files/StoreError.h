// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <stdexcept>

namespace paukfix {

// Numbers that users of card files know; any other engine error keeps the engine's own code.
namespace Fehler {
inline constexpr int Ueberlauf = 6;
inline constexpr int ZuWenigSpeicher = 7;
inline constexpr int IndexAusserhalb = 9;
inline constexpr int TypUnvertraeglich = 13;
inline constexpr int DateiNichtGefunden = 53;
inline constexpr int GeraeteFehler = 57;
inline constexpr int DatentraegerVoll = 61;
inline constexpr int ZuVieleDateien = 67;
inline constexpr int PfadNichtGefunden = 76;
inline constexpr int NichtsOffen = 91;
inline constexpr int NullUngueltig = 94;
inline constexpr int IndexFehlt = 3015;
inline constexpr int KeinEdit = 3020;
inline constexpr int KeinDatensatz = 3021;
inline constexpr int DoppelterSchluessel = 3022;
inline constexpr int KarteiNichtGefunden = 3024;
inline constexpr int KennwortFalsch = 3031;
inline constexpr int Gesperrt = 3045;
inline constexpr int Beschaedigt = 3049;
inline constexpr int NichtErlaubt = 3051;
inline constexpr int Abgebrochen = 3059;
inline constexpr int TabelleFehlt = 3078;
inline constexpr int TextZuLang = 3163;
inline constexpr int FeldFehlt = 3265;
inline constexpr int FormatUnbekannt = 3343;
} // namespace Fehler

// What the store throws: a number (above, or the engine's own) and a German sentence for the user.
class StoreError : public std::runtime_error
{
public:
    StoreError(int number, const QString &text);

    int Number() const { return number_; }

    QString Text() const;

private:
    int number_;
};

// The text to show for any exception: the German sentence of a StoreError or one about what happened.
QString ErrorText(const std::exception &error);

} // namespace paukfix
