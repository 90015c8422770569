// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>
#include <QTimer>

#include <optional>
#include <thread>

class QWindow;

// Holds the keyboard of an X server until another window of the program has it: what is typed while that
// window is on its way waits in the server, and goes to it. Ends by itself after two seconds. Does nothing on
// other window systems, or where `tastatur` does not have it.
class Tastaturhalt final : public QObject
{
public:
    // `tastatur` is the window that has the keyboard now.
    Tastaturhalt(QWindow *von, const QWindow *tastatur);
    Tastaturhalt(const Tastaturhalt &) = delete;
    Tastaturhalt &operator=(const Tastaturhalt &) = delete;
    ~Tastaturhalt() override;

private:
    void Loslassen();

    QTimer takt_;
    std::jthread halter_; // lets go when it is stopped, or in time, whatever the program is busy with
};

// Gives the keyboard of an X server from `von`, which is about to be hidden, back to the visible window `an`,
// and holds it as long as it lives. Its end waits until the window manager has let go of `von`: until then
// that one looks for a window to give the keyboard to. Does nothing elsewhere, or where `von` does not have
// the keyboard. Both windows must outlive it.
class Tastaturrueckgabe
{
public:
    Tastaturrueckgabe(QWindow *von, QWindow *an);
    Tastaturrueckgabe(const Tastaturrueckgabe &) = delete;
    Tastaturrueckgabe &operator=(const Tastaturrueckgabe &) = delete;
    ~Tastaturrueckgabe();

private:
    QWindow *von_, *an_;
    std::optional<Tastaturhalt> halt_;
};

// Lets pending events run until everything that was typed so far has come to its window. `fenster` is any
// window of the program's.
void TastenAbholen(const QWindow *fenster);
