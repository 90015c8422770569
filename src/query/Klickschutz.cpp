// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Klickschutz.h"

#include <QMouseEvent>
#include <QWidget>

namespace paukfix {

Klickschutz::Klickschutz(QWidget &erster, QWidget &zweiter) : QObject(&erster), erster_(erster)
{
    erster.installEventFilter(this);
    zweiter.installEventFilter(this);
}

bool Klickschutz::eventFilter(QObject *objekt, QEvent *event)
{
    constexpr quint64 Schutz = 400; // ms
    const bool druck =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (objekt == &erster_ && (druck || event->type() == QEvent::MouseButtonRelease)) {
        geklickt_ = static_cast<const QMouseEvent *>(event)->timestamp();
        return false;
    }
    return objekt != &erster_ && druck && geklickt_ &&
           static_cast<const QMouseEvent *>(event)->timestamp() - *geklickt_ < Schutz;
}

} // namespace paukfix
