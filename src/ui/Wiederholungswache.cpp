// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wiederholungswache.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace paukfix {

Wiederholungswache::Wiederholungswache()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool Wiederholungswache::eventFilter(QObject *objekt, QEvent *event)
{
    // Keys come to the window first, each once.
    if (!objekt->isWindowType() || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (event->type() == QEvent::KeyRelease) {
        losgelassen_ = taste.nativeScanCode();
        zeit_ = taste.timestamp();
        return false;
    }
    const bool wiederholt =
        taste.timestamp() != 0 && taste.timestamp() == zeit_ && taste.nativeScanCode() == losgelassen_;
    if (!wiederholt || taste.isAutoRepeat())
        return false;
    QKeyEvent neu(QEvent::KeyPress, taste.key(), taste.modifiers(), taste.nativeScanCode(),
                  taste.nativeVirtualKey(), taste.nativeModifiers(), taste.text(), true,
                  static_cast<quint16>(taste.count()));
    neu.setTimestamp(taste.timestamp());
    QCoreApplication::sendEvent(objekt, &neu);
    event->setAccepted(neu.isAccepted());
    return true;
}

} // namespace paukfix
