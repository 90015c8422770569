// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <functional>
#include <memory>
#include <string>

// Plays one wave file at a time in the background. To be used on one thread.
//
// Reading the file and opening the device happen on a thread of the player's own, which sleeps while nothing
// is to be done; the device is open only while a sound is heard.
class SoundPlayer
{
public:
    // `report` gets the messages for the user, within PlaySound.
    explicit SoundPlayer(std::function<void(const std::string &)> report);
    SoundPlayer(const SoundPlayer &) = delete;
    SoundPlayer &operator=(const SoundPlayer &) = delete;
    // Stops the sound. Waits one second at most for a device that does not answer.
    ~SoundPlayer();

    // Stops the sound that plays and starts the wave file at `path` (UTF-8). Returns as soon as it is known
    // whether it plays: at once, as a rule. A file or device that does not answer for two seconds counts as
    // missing, and while it still keeps the player waiting every further sound is refused at once.
    void PlaySound(const std::string &path);
    // Harmless when nothing plays.
    void StopSound();

private:
    struct State;
    static void Work(State &state);
    std::string Start(const std::string &path); // the message for the user, empty when the sound plays

    std::function<void(const std::string &)> report_;
    std::shared_ptr<State> state_; // shared with the thread, which may outlive the player when a device hangs
};
