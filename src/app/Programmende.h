// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace paukfix {

// Ends the program from wherever it is, whoever asks for it: the desktop's session, a signal, quit. Dialogs
// and messages are closed one after the other, as their user would with Escape, and what they were for runs
// to its end; then the windows are closed. A window that wants to stay, because its user does, calls it off.
class Programmende final : public QObject
{
public:
    // `beschaeftigt` tells of work that is under way without a dialog, and must come to its end first.
    explicit Programmende(std::function<bool()> beschaeftigt);

    // Returns at once; the rest follows with the event loop.
    void Beenden();
    // The program goes on after all.
    void Absagen();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Step();

    std::function<bool()> beschaeftigt_;
    QTimer takt_;
    bool schliesst_ = false; // the windows are being closed, and may ask
};

} // namespace paukfix
