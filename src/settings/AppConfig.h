// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "StoreError.h"

#include <QString>

#include <array>
#include <functional>

// The standard font for the text of new cards.
struct Schrift
{
    QString FontName;
    float FontSize = 10; // points
    bool FontBold = false, FontItalic = false, FontStrikethru = false, FontUnderline = false;
    qint32 Color = 0; // blue-green-red
};

// The user's settings and the file "konfig.dat" in the program directory that keeps them.
class AppConfig
{
public:
    explicit AppConfig(Meldungen &meldungen);

    QString ProgrammPfad; // program directory, without a separator at its end
    Schrift schrift;
    std::array<QString, 5> MDat; // recently opened card files, latest first; an empty entry is not shown
    bool Animation = true;
    std::function<void()> Gelesen = [] {
    }; // called after every ReadConfig, so that the menu shows the new values

    // Takes every setting that the file holds; what it lacks, or what cannot be read, keeps its value. Each
    // error is shown ("Fehler in Konfig_Lesen" and its text) and the reading goes on.
    void ReadConfig();
    // Rewrites one section and reads the file anew: 1 puts the file name `value` on top of the recent files,
    // 2 stores `schrift` (`value` is not used), 3 stores `value`, "True" or "False", as the animation
    // setting. A section that the file does not have is not written. Throws StoreError, and konfig.dat is
    // then as it was.
    void WriteConfig(qint16 section, const QString &value);
    // The animation setting as the intro reads it: header and key in exactly this letter case, true when
    // there is none. Throws StoreError.
    bool ReadIntroAnimation() const;

private:
    QString KonfigPfad(const char *name) const;

    Meldungen &meldungen_;
};
