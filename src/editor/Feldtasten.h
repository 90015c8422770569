// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>
#include <QObject>

class QKeyEvent;
class QWidget;

namespace paukfix {

// The keys that are the same in all text fields of a window: those of its menu hold against the fields' own,
// and Ctrl+Y does again what was undone.
class Feldtasten final : public QObject
{
public:
    // Belongs to the window.
    Feldtasten(QWidget *fenster, const QList<QWidget *> &felder);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    bool HaltMenue(const QKeyEvent &taste) const;

    QWidget *fenster_;
};

} // namespace paukfix
