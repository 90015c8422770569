// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LangeArbeit.h"

#include <QCoreApplication>
#include <QEvent>
#include <QProgressBar>

namespace {

constexpr int WartenMs = 300; // before the progress is shown
constexpr int TaktMs = 40;    // between two pictures of it

} // namespace

LangeArbeit::LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken)
    : meldungen_(meldungen), inhalt_(inhalt), balken_(balken), fokus_(inhalt.window()->focusWidget())
{
    inhalt_.window()->installEventFilter(this);
    seit_.start();
    inhalt_.setEnabled(false);
    meldungen_.Sanduhr(true);
}

LangeArbeit::~LangeArbeit()
{
    meldungen_.Sanduhr(false);
    // What was clicked meanwhile was meant for the work that is over: it goes to the disabled controls.
    QCoreApplication::processEvents();
    inhalt_.window()->removeEventFilter(this);
    balken_.hide();
    inhalt_.setEnabled(true);
    if (fokus_)
        fokus_->setFocus();
}

// A message is told by the window that it blocks, whoever shows it.
bool LangeArbeit::eventFilter(QObject *fenster, QEvent *event)
{
    if (event->type() == QEvent::WindowBlocked) {
        balken_.hide();
        inhalt_.setEnabled(true);
    } else if (event->type() == QEvent::WindowUnblocked) {
        inhalt_.setEnabled(false);
    }
    return QObject::eventFilter(fenster, event);
}

Fortschritt LangeArbeit::Melder()
{
    return [this](int erledigt, int gesamt) { Zeigen(erledigt, gesamt); };
}

void LangeArbeit::Zeigen(int erledigt, int gesamt)
{
    const qint64 jetzt = seit_.elapsed();
    if (gesamt > 0 && (jetzt < WartenMs || jetzt - zuletzt_ < TaktMs))
        return;
    zuletzt_ = jetzt;
    balken_.setRange(0, gesamt);
    balken_.setValue(erledigt);
    balken_.show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
