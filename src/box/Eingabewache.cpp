// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Eingabewache.h"

#include <QCoreApplication>

Eingabewache::Eingabewache()
{
    QCoreApplication::instance()->installEventFilter(this);
}

Eingabewache::~Eingabewache()
{
    for (Aufgehoben &eingabe : aufgehoben_) {
        if (eingabe.empfaenger)
            QCoreApplication::postEvent(eingabe.empfaenger, eingabe.event.release());
    }
}

bool Eingabewache::Unterbrochen()
{
    QCoreApplication::processEvents();
    return unterbrochen_;
}

bool Eingabewache::eventFilter(QObject *objekt, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::Shortcut:
        unterbrochen_ = true;
        break;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        break;
    case QEvent::Close:
        // The window system's wish goes to the window's handle; close() of a widget has to be answered at
        // once.
        if (!objekt->isWindowType())
            return false;
        break;
    default:
        return false;
    }
    aufgehoben_.push_back({objekt, std::unique_ptr<QEvent>(event->clone())});
    return true;
}
