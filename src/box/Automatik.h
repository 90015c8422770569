// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Belegung.h"
#include "Clock.h"

#include <QObject>
#include <QTimer>

namespace paukfix {

// The automatic mode: while it is on, a card is due after every pause of three changes of the clock's second.
// The pause begins when nothing else is open. It is off at start.
class Automatik final : public QObject
{
    Q_OBJECT

public:
    // Both must outlive it.
    Automatik(const Clock &clock, const Belegung &belegung, QObject *parent = nullptr);

    // Switches it on or off.
    void MAutoschalter_Click();
    void AutomatikAus();

signals:
    void Umgeschaltet(bool an);
    void Faellig();

private:
    void Takt();

    const Clock &clock_;
    const Belegung &belegung_;
    QTimer takt_;
    qint64 sekunde_ = 0;      // the clock as it was last noted
    int sekundenwechsel_ = 0; // since the pause began
};

} // namespace paukfix
