// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <optional>
#include <thread>

class QWindow;

namespace paukfix {

// Holds the keyboard of an X server as long as it lives, but two seconds at most, whatever the program is
// busy with: what is typed meanwhile waits in the server. Does nothing on other window systems, or where
// `tastatur` does not have the keyboard.
class Tastaturgriff
{
public:
    // `fenster` is a visible window of the program's.
    Tastaturgriff(const QWindow *fenster, const QWindow *tastatur);

private:
    std::jthread halter_; // lets go when it is stopped, or in time
};

// Holds the keyboard until another window of the program than `fenster`, which has it now, has got it: what
// is typed while that window is on its way goes to it.
class Tastaturhalt final : public QObject
{
public:
    explicit Tastaturhalt(const QWindow *fenster);

private:
    std::optional<Tastaturgriff> griff_;
    QTimer takt_;
};

// Gives the keyboard of an X server from `von`, which is about to be hidden, back to the visible window `an`,
// and holds it as long as it lives. Its end waits until the window manager has let go of `von`: until then
// that one looks for a window to give the keyboard to. Does nothing elsewhere, or where `von` does not have
// the keyboard. `an` must outlive it.
class Tastaturrueckgabe
{
public:
    Tastaturrueckgabe(const QWindow *von, QWindow *an);
    Tastaturrueckgabe(const Tastaturrueckgabe &) = delete;
    Tastaturrueckgabe &operator=(const Tastaturrueckgabe &) = delete;
    ~Tastaturrueckgabe();

private:
    QWindow *an_;
    std::uint32_t von_ = 0; // the server's number
    std::optional<Tastaturgriff> griff_;
};

// Lets pending events run until everything that was typed so far has come to its window. `fenster` is any
// window of the program's.
void TastenAbholen(const QWindow *fenster);

} // namespace paukfix
