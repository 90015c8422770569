// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FachInfo.h"

#include <QDateTime>

#include <array>

namespace paukfix {

// The session's tally: what the counts were when the card file was opened, and the answers since.
class Sitzung
{
public:
    using Anzahlen = std::array<qint16, FachAnzahl>;

    // A session begins, with these counts and no answers.
    void StartSessionTally(const QDateTime &jetzt, const FachTabelle &faecher);
    // No session has begun: nothing is open that its counts could be compared with.
    void Leeren() noexcept;
    void Zaehlen(bool richtig) noexcept;

    // Invalid where no session has begun.
    const QDateTime &Beginn() const { return beginn_; }

    const Anzahlen &BegAnz() const { return begAnz_; }

    // Answers; both stop at 32,767.
    qint16 RichtigZaehler() const { return richtig_; }

    qint16 FalschZaehler() const { return falsch_; }

private:
    QDateTime beginn_;
    Anzahlen begAnz_{};
    qint16 richtig_ = 0, falsch_ = 0;
};

} // namespace paukfix
