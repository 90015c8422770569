// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDialog>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace paukfix {

// The keys and buttons of one window.
struct Tastengruppe
{
    struct Zeile
    {
        QString tasten; // as a Tastenkappe takes them: "[Strg]+[Z]"
        QString was;
    };

    QString fenster; // the object name of the window; empty for those of every window
    QString titel;
    QList<Zeile> zeilen;
};

// All keys and buttons in one place, grouped by windows; comes up with the group of the window `fenster`.
class Tastenfenster final : public QDialog
{
public:
    Tastenfenster(const QList<Tastengruppe> &gruppen, const QString &fenster, QWidget *parent);
};

// Calls `hilfe` when F1 is pressed in any window of the application: not while a menu is open, nor while a
// work reports its progress, nor while the help itself is shown.
class Hilfetaste final : public QObject
{
public:
    explicit Hilfetaste(std::function<void()> hilfe);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    std::function<void()> hilfe_;
    bool offen_ = false;
};

} // namespace paukfix
