// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LangeArbeit.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QProgressBar>
#include <QWidget>

#include <utility>

namespace paukfix {

namespace {

constexpr int WartenMs = 300; // before the progress is shown
constexpr int TaktMs = 40;    // between two pictures of it

bool IstEingabe(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}

} // namespace

LangeArbeit::LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken)
    : meldungen_(meldungen), inhalt_(inhalt), balken_(balken), fokus_(inhalt.window()->focusWidget())
{
    inhalt_.window()->installEventFilter(this);
    seit_.start();
    Sperren();
    meldungen_.Sanduhr(true);
}

LangeArbeit::~LangeArbeit()
{
    meldungen_.Sanduhr(false);
    // What was typed and clicked meanwhile was meant for the work that is over. What was put aside while the
    // progress was painted only comes when the dispatcher is woken.
    verwerfen_ = true;
    QCoreApplication::instance()->installEventFilter(this);
    QAbstractEventDispatcher::instance()->wakeUp();
    QCoreApplication::processEvents();
    QCoreApplication::instance()->removeEventFilter(this);
    inhalt_.window()->removeEventFilter(this);
    balken_.hide();
    Freigeben();
    if (fokus_)
        fokus_->setFocus();
}

// A message is told by the window that it blocks, whoever shows it.
bool LangeArbeit::eventFilter(QObject *objekt, QEvent *event)
{
    if (verwerfen_)
        return IstEingabe(event->type());
    if (event->type() == QEvent::WindowBlocked) {
        balken_.hide();
        Freigeben();
    } else if (event->type() == QEvent::WindowUnblocked) {
        Sperren();
    }
    return QObject::eventFilter(objekt, event);
}

// What explains stays readable.
void LangeArbeit::Sperren()
{
    for (QWidget *widget : inhalt_.findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isEnabled())
            continue;
        widget->setEnabled(false);
        gesperrt_ << widget;
    }
}

void LangeArbeit::Freigeben()
{
    for (QWidget *widget : std::exchange(gesperrt_, {}))
        widget->setEnabled(true);
}

Progress LangeArbeit::Melder()
{
    return [this](int erledigt, int gesamt) { Zeigen(erledigt, gesamt); };
}

void LangeArbeit::Zeigen(int erledigt, int gesamt)
{
    const qint64 jetzt = seit_.elapsed();
    if (gesamt > 0 && (jetzt < WartenMs || jetzt - zuletzt_ < TaktMs))
        return;
    if (gesamt > 0) // what is known follows the unknown at once
        zuletzt_ = jetzt;
    balken_.setRange(0, gesamt);
    balken_.setValue(erledigt);
    balken_.show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace paukfix
