// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace paukfix {

// A menu of this name at the end of the bar.
inline QMenu *MenueBauen(QMenuBar *leiste, const QString &name, const QString &text)
{
    QMenu *neu = leiste->addMenu(text);
    neu->setObjectName(name);
    neu->menuAction()->setObjectName(name);
    return neu;
}

// An entry of this name at the end of the menu, and what it does.
template <typename Aktion>
QAction *EintragBauen(QMenu *menue, const QString &name, const QString &text, const QKeySequence &taste,
                      Aktion aktion)
{
    auto *neu = new QAction(text, menue);
    neu->setObjectName(name);
    neu->setShortcut(taste);
    QObject::connect(neu, &QAction::triggered, menue, aktion);
    menue->addAction(neu);
    return neu;
}

} // namespace paukfix
