// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Automatik.h"

#include <QApplication>

namespace paukfix {

namespace {

constexpr int TaktMs = 100;      // from one look at the clock to the next
constexpr int Pausenwechsel = 3; // changes of the clock's second

} // namespace

Automatik::Automatik(const Clock &clock, const Belegung &belegung, QObject *parent)
    : QObject(parent), clock_(clock), belegung_(belegung)
{
    takt_.setInterval(TaktMs);
    connect(&takt_, &QTimer::timeout, this, &Automatik::Takt);
}

void Automatik::MAutoschalter_Click()
{
    if (takt_.isActive()) {
        AutomatikAus();
        return;
    }
    sekunde_ = clock_.Second();
    sekundenwechsel_ = 0;
    takt_.start();
    emit Umgeschaltet(true);
}

void Automatik::AutomatikAus()
{
    takt_.stop();
    emit Umgeschaltet(false);
}

void Automatik::Takt()
{
    const qint64 jetzt = clock_.Second();
    if (belegung_.IstBelegt() || QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
        sekundenwechsel_ = 0;
    } else if (jetzt != sekunde_ && ++sekundenwechsel_ >= Pausenwechsel) {
        sekundenwechsel_ = 0;
        emit Faellig();
    }
    sekunde_ = clock_.Second();
}

} // namespace paukfix
