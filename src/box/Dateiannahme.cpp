// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dateiannahme.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace paukfix {

Dateiannahme::Dateiannahme(QWidget &fenster, std::function<bool(const QString &pfad)> passt)
    : QObject(&fenster), passt_(std::move(passt))
{
    fenster.setAcceptDrops(true);
    fenster.installEventFilter(this);
}

// One file: which of several was meant nobody knows.
QString Dateiannahme::Pfad(const QMimeData &mime) const
{
    const QList<QUrl> orte = mime.urls();
    if (orte.size() != 1 || !orte.front().isLocalFile())
        return {};
    QString pfad = orte.front().toLocalFile();
    return passt_(pfad) ? pfad : QString();
}

bool Dateiannahme::eventFilter(QObject *objekt, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    default:
        return QObject::eventFilter(objekt, event);
    }
    auto &zug = static_cast<QDropEvent &>(*event);
    const QString pfad = Pfad(*zug.mimeData());
    if (pfad.isEmpty()) {
        zug.ignore();
        return true;
    }
    if (event->type() == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, pfad] { emit Abgelegt(pfad); }, Qt::QueuedConnection);
    zug.setDropAction(Qt::CopyAction);
    zug.accept();
    return true;
}

} // namespace paukfix
