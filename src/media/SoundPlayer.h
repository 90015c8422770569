// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace paukfix {

// Plays one wave file at a time in the background. To be used on one thread.
//
// Reading the file and opening the device happen on a thread of the player's own, which sleeps while nothing
// is to be done; the device is open only while a sound is heard.
//
// Where the system offers no device at all, sounds play unheard and without a message.
class SoundPlayer
{
public:
    // How long the caller waits for a file or a device that does not answer.
    struct Patience
    {
        std::chrono::milliseconds start{2000}, end{1000};
    };

    // `report` gets the messages for the user, within PlaySound.
    explicit SoundPlayer(std::function<void(const std::string &)> report);
    SoundPlayer(std::function<void(const std::string &)> report, Patience patience);
    SoundPlayer(const SoundPlayer &) = delete;
    SoundPlayer &operator=(const SoundPlayer &) = delete;
    // Stops the sound. Waits for a device that does not answer as long as patience lasts, one second by
    // default.
    ~SoundPlayer();

    // Stops the sound that plays and starts the wave file at `path` (UTF-8). Returns as soon as it is known
    // whether it plays: at once, as a rule. A file or device that does not answer while patience lasts,
    // two seconds by default, counts as missing, and while it still keeps the player waiting every further
    // sound is refused at once.
    void PlaySound(const std::string &path);
    // Harmless when nothing plays.
    void StopSound();
    // At the last sound the system offered no device. The next sounds look for one again, every few seconds.
    bool IsSilent() const;

private:
    struct State;
    static void Work(State &state);
    std::string Start(const std::string &path); // the message for the user, empty when the sound plays

    std::function<void(const std::string &)> report_;
    Patience patience_;
    std::shared_ptr<State> state_; // shared with the thread, which may outlive the player when a device hangs
};

} // namespace paukfix
