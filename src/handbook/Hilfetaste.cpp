// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Hilfetaste.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProgressDialog>

#include <utility>

namespace paukfix {

Hilfetaste::Hilfetaste(std::function<void()> hilfe) : hilfe_(std::move(hilfe))
{
    QApplication::instance()->installEventFilter(this);
}

bool Hilfetaste::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (taste.key() != Qt::Key_F1 || taste.modifiers() != Qt::NoModifier || !objekt->isWidgetType())
        return false;
    if (!offen_ && !taste.isAutoRepeat() && !QApplication::activePopupWidget() &&
        !qobject_cast<QProgressDialog *>(QApplication::activeModalWidget())) {
        offen_ = true;
        hilfe_();
        offen_ = false;
    }
    return true;
}

} // namespace paukfix
