// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LangeArbeit.h"

#include "StoreError.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

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

LangeArbeit::LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken, QPushButton *abbrechen)
    : meldungen_(meldungen),
      inhalt_(inhalt),
      balken_(balken),
      abbrechen_(abbrechen),
      fokus_(inhalt.window()->focusWidget()),
      endbar_(abbrechen != nullptr)
{
    if (abbrechen_)
        connect(abbrechen_, &QPushButton::clicked, this, [this] { beenden_ = true; });
    QCoreApplication::instance()->installEventFilter(this);
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
    QAbstractEventDispatcher::instance()->wakeUp();
    QCoreApplication::processEvents();
    QCoreApplication::instance()->removeEventFilter(this);
    balken_.hide();
    KnopfZeigen(false);
    Freigeben();
    if (fokus_)
        fokus_->setFocus();
}

// A message is told by the window that it blocks, whoever shows it.
bool LangeArbeit::eventFilter(QObject *objekt, QEvent *event)
{
    if (verwerfen_)
        return IstEingabe(event->type());
    if (objekt == inhalt_.window()) {
        if (event->type() == QEvent::WindowBlocked) {
            ruht_ = true;
            balken_.hide();
            KnopfZeigen(false);
            Freigeben();
        } else if (event->type() == QEvent::WindowUnblocked) {
            ruht_ = false;
            Sperren();
        }
    }
    return !ruht_ && IstEingabe(event->type()) && !Durchlassen(objekt, event);
}

// The button's own mouse events, and Escape wherever it is pressed.
bool LangeArbeit::Durchlassen(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        if (dynamic_cast<QKeyEvent &>(*event).key() == Qt::Key_Escape && abbrechen_ &&
            abbrechen_->isVisible())
            beenden_ = true;
        return false;
    }
    const bool maus =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
    // What a window's system delivers goes to the window first.
    return maus && (objekt == abbrechen_ || objekt->isWindowType());
}

void LangeArbeit::KnopfZeigen(bool zeigen)
{
    if (abbrechen_)
        abbrechen_->setVisible(zeigen);
}

void LangeArbeit::Unwiderruflich()
{
    endbar_ = false;
    KnopfZeigen(false);
}

// What explains stays readable.
void LangeArbeit::Sperren()
{
    for (QWidget *widget : inhalt_.findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isEnabled() || widget == abbrechen_)
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
    KnopfZeigen(endbar_);
    QCoreApplication::processEvents();
    if (beenden_ && endbar_) {
        Unwiderruflich();
        throw StoreError(Fehler::Abgebrochen, u"Abgebrochen. Es bleibt alles, wie es war."_s);
    }
}

} // namespace paukfix
