// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"

#include <QBasicTimer>
#include <QObject>

#include <optional>

class QAbstractButton;
class QWidget;

namespace paukfix {

// Runs through the cards as long as one of two buttons is held, by any mouse button or the space bar. Every
// card that is passed is seen.
class Kartenlauf final : public QObject
{
public:
    // Both buttons stand on the form, which shows the cards; all outlives this.
    Kartenlauf(CardEditor &editor, QWidget *formular, QAbstractButton *rueckwaerts,
               QAbstractButton *vorwaerts);

    // Also where the release goes to a message's window: the buttons do not wait for it.
    void Beenden();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    bool Beginnen(CardEditor::Richtung richtung);
    void Step();

    CardEditor &editor_;
    QWidget *formular_;
    QAbstractButton *rueckwaerts_;
    QAbstractButton *vorwaerts_;
    QBasicTimer takt_;
    std::optional<CardEditor::Richtung> richtung_; // none: nobody runs
};

} // namespace paukfix
