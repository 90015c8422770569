// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// The sounds of the cards, passed in so that a test can say what was heard.
class Ton
{
public:
    Ton() = default;
    Ton(const Ton &) = delete;
    Ton &operator=(const Ton &) = delete;
    virtual ~Ton() = default;

    // Stops the sound that plays and starts this sound file; what goes wrong is told to the user.
    virtual void Spielen(const QString &pfad) = 0;
    // Harmless when nothing plays.
    virtual void Stille() = 0;
};

} // namespace paukfix
