// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

// Lets windows live on while something moves, without anybody being able to start something else: as long as
// it lives, keys, clicks and the wish to close a window are kept, and they are delivered in order when it
// goes.
class Eingabewache final : public QObject
{
public:
    Eingabewache();
    ~Eingabewache() override;

    // Lets pending events run. True once a key or mouse button has been pressed: the movement should end
    // then.
    bool Unterbrochen();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    struct Aufgehoben
    {
        QPointer<QObject> empfaenger;
        std::unique_ptr<QEvent> event;
    };

    std::vector<Aufgehoben> aufgehoben_;
    bool unterbrochen_ = false;
};
