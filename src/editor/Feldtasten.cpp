// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Feldtasten.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextEdit>

namespace paukfix {

Feldtasten::Feldtasten(QWidget *fenster, const QList<QWidget *> &felder) : QObject(fenster), fenster_(fenster)
{
    for (QWidget *feld : felder)
        feld->installEventFilter(this);
}

bool Feldtasten::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && HaltMenue(static_cast<const QKeyEvent &>(*event))) {
        event->ignore(); // not accepted, the key goes to the menu
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (taste.key() != Qt::Key_Y || taste.modifiers() != Qt::ControlModifier)
        return false;
    if (auto *box = dynamic_cast<QTextEdit *>(objekt))
        box->redo();
    else if (auto *zeile = dynamic_cast<QLineEdit *>(objekt))
        zeile->redo();
    return true;
}

bool Feldtasten::HaltMenue(const QKeyEvent &taste) const
{
    const QList<QAction *> eintraege = fenster_->findChildren<QAction *>();
    for (const QAction *eintrag : eintraege)
        if (eintrag->isEnabled() && !eintrag->shortcut().isEmpty() &&
            eintrag->shortcut() == QKeySequence(taste.keyCombination()))
            return true;
    return false;
}

} // namespace paukfix
