// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Fortschritt.h"
#include "Meldungen.h"

#include <QElapsedTimer>

class QProgressBar;
class QWidget;

// Work that may take long, as long as it lives: shows the hourglass and takes no keys and clicks; what comes
// of these meanwhile is lost. The progress appears when the work has taken a third of a second.
class LangeArbeit
{
public:
    LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken);
    LangeArbeit(const LangeArbeit &) = delete;
    LangeArbeit &operator=(const LangeArbeit &) = delete;
    ~LangeArbeit();

    // Must not outlive the work.
    Fortschritt Melder();

private:
    void Zeigen(int erledigt, int gesamt);

    Meldungen &meldungen_;
    QWidget &inhalt_;
    QProgressBar &balken_;
    QWidget *fokus_;
    QElapsedTimer seit_;
    qint64 zuletzt_ = 0; // when the progress was last shown, in ms
};
