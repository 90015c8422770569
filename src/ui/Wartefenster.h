// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <QElapsedTimer>
#include <QProgressDialog>

namespace paukfix {

// Shows how far work has come that blocks every window, and lets the learner end it. It appears when the work
// has taken half a second.
class Wartefenster final : public QProgressDialog
{
public:
    // `was` is being done.
    Wartefenster(const QString &was, const QString &titel, QWidget *parent);

    // Of 0 steps of 0: nobody knows how many are left. Throws StoreError 3059 with the text `abgebrochen`
    // after the learner has asked for the end.
    void Zeigen(int erledigt, int gesamt, const QString &abgebrochen);

private:
    QElapsedTimer seit_;
    qint64 zuletzt_ = 0; // when it was last painted, in ms
};

// A new one, which lives as long as the function that tells it of the progress.
Progress WartenMitAbbruch(const QString &was, const QString &abgebrochen, const QString &titel,
                          QWidget *parent);

} // namespace paukfix
