// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenlauf.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace paukfix {

Kartenlauf::Kartenlauf(CardEditor &editor, QWidget *formular, QAbstractButton *rueckwaerts,
                       QAbstractButton *vorwaerts)
    : editor_(editor), formular_(formular), rueckwaerts_(rueckwaerts), vorwaerts_(vorwaerts)
{
    rueckwaerts_->installEventFilter(this);
    vorwaerts_->installEventFilter(this);
}

bool Kartenlauf::eventFilter(QObject *objekt, QEvent *event)
{
    const auto richtung = objekt == vorwaerts_ ? CardEditor::Richtung::Vor : CardEditor::Richtung::Zurueck;
    const auto istLeertaste = [event] {
        const auto &taste = static_cast<const QKeyEvent &>(*event);
        return taste.key() == Qt::Key_Space && !taste.isAutoRepeat();
    };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // A button that does not run is not shown as held either.
        return !Beginnen(richtung);
    case QEvent::KeyPress:
        return istLeertaste() && !Beginnen(richtung);
    case QEvent::KeyRelease:
        if (istLeertaste())
            Beenden();
        return false;
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
    case QEvent::Hide:
        Beenden();
        return false;
    default:
        return false;
    }
}

bool Kartenlauf::Beginnen(CardEditor::Richtung richtung)
{
    Beenden();
    if (!editor_.StoreIfDirty())
        return false;
    richtung_ = richtung;
    Step();
    return richtung_.has_value();
}

void Kartenlauf::Step()
{
    // A step may open a message: no further one is due while it stands, nor behind it.
    takt_.stop();
    const bool weiter = richtung_ && editor_.Laufschritt(*richtung_);
    formular_->repaint();
    if (!weiter || !richtung_ || !formular_->isActiveWindow()) {
        Beenden();
        return;
    }
    // The event loop comes round between the steps, so the release of the button is seen at once.
    takt_.start(0, this);
}

void Kartenlauf::Beenden()
{
    richtung_.reset();
    takt_.stop();
    vorwaerts_->setDown(false);
    rueckwaerts_->setDown(false);
}

void Kartenlauf::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == takt_.timerId())
        Step();
    else
        QObject::timerEvent(event);
}

} // namespace paukfix
