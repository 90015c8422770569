// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programmende.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <QThread>
#include <QWidget>

#include <utility>

namespace paukfix {

namespace {

constexpr int TaktMs = 10; // from one step to the next

QWidget *OffenesFenster()
{
    for (QWidget *fenster : QApplication::topLevelWidgets())
        if (fenster->isVisible() && fenster->isWindow() && fenster->windowType() != Qt::ToolTip)
            return fenster;
    return nullptr;
}

// False where one of them wants to stay.
bool FensterSchliessen()
{
    while (QWidget *fenster = OffenesFenster())
        if (!fenster->close() || fenster->isVisible())
            return false;
    return true;
}

} // namespace

Programmende::Programmende(std::function<bool()> beschaeftigt) : beschaeftigt_(std::move(beschaeftigt))
{
    takt_.setInterval(TaktMs);
    connect(&takt_, &QTimer::timeout, this, [this] { Step(); });
    QCoreApplication::instance()->installEventFilter(this);
}

void Programmende::Beenden()
{
    if (!schliesst_)
        takt_.start();
}

void Programmende::Absagen()
{
    takt_.stop();
}

void Programmende::Step()
{
    if (QWidget *offen = QApplication::activePopupWidget()) {
        offen->close();
    } else if (QWidget *dialog = QApplication::activeModalWidget()) {
        dialog->close(); // refused while it works
    } else if (QThread::currentThread()->loopLevel() <= 1 && !beschaeftigt_()) {
        const QScopedValueRollback schliesst(schliesst_, true);
        takt_.stop();
        if (FensterSchliessen())
            takt_.start(); // a window may be on its way, as at the start
    }
}

// The toolkit would close windows under the dialogs that lie over them, and give up where that fails.
bool Programmende::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::Quit || objekt != QCoreApplication::instance() || !OffenesFenster())
        return false;
    event->ignore();
    Beenden();
    return true;
}

} // namespace paukfix
