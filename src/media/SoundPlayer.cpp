// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SoundPlayer.h"

#include "Sdl.h"
#include "WaveFile.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace paukfix {

// What the player and its thread tell each other; every member under `mutex`.
struct SoundPlayer::State
{
    std::mutex mutex;
    std::condition_variable asked, answered;

    std::thread thread;
    uint64_t request = 0;            // counts the sounds and stops asked for
    std::optional<std::string> path; // the sound asked for last, nothing for a stop
    bool quit = false;

    uint64_t done = 0;     // the last request that has been carried out
    bool playing = false;  // its outcome
    bool silent = false;   // it found no device
    std::string error;     // something unexpected in it
    uint64_t givenUp = 0;  // the last request that took too long
    bool ended = false;    // the sound is over, the device can be closed
    bool finished = false; // the thread has let go of everything
};

namespace {

constexpr auto LookPause = std::chrono::seconds(3); // between two looks for a device that was not there
constexpr const char *NoWave = "Keine WAV-Datei nicht vorhanden !";
constexpr const char *Unexpected = "Fehler bei Play_Sound ";

// In German: the library's own texts are English.
const char *Description(const std::exception &exception)
{
    return dynamic_cast<const std::system_error *>(&exception) != nullptr
               ? "Das System startet keinen weiteren Thread."
               : "Nicht genügend Speicher.";
}

// SDL lets its user name the driver.
bool DriverIsChosen()
{
    const char *driver = std::getenv("SDL_AUDIODRIVER");
    return driver != nullptr && *driver != '\0';
}

// SDL's audio, kept from the first sound on.
class AudioSystem
{
public:
    AudioSystem() = default;
    AudioSystem(const AudioSystem &) = delete;
    AudioSystem &operator=(const AudioSystem &) = delete;

    ~AudioSystem() { Close(); }

    bool Open()
    {
        const Sdl *sdl = LoadSdl();
        if (sdl == nullptr)
            return false;
        CloseSilent();
        // Otherwise SDL would take SIGINT and SIGTERM for itself.
        sdl->SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        sdl->SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Paukfix");
        open_ = open_ || sdl->InitSubSystem(SDL_INIT_AUDIO) == 0;
        return open_;
    }

    // After a device could not be opened: true where the system has none, and a driver that nobody hears has
    // been opened instead. A driver that the user has chosen and that fails is no lack of devices.
    bool OpenSilent()
    {
        const Sdl *sdl = LoadSdl();
        if (sdl == nullptr || DriverIsChosen() || (open_ && sdl->GetNumAudioDevices(0) != 0))
            return false;
        Close();
        silent_ = sdl->AudioInit("dummy") == 0;
        looked_ = std::chrono::steady_clock::now();
        return silent_;
    }

    void Close()
    {
        CloseSilent();
        if (std::exchange(open_, false))
            LoadSdl()->QuitSubSystem(SDL_INIT_AUDIO);
    }

    bool IsOpen() const { return open_; }

    bool IsSilent() const { return silent_; }

    // Whether a look for a device has to wait: it takes a good part of the time that a sound takes to start.
    bool HasJustLooked() const { return silent_ && std::chrono::steady_clock::now() - looked_ < LookPause; }

private:
    void CloseSilent()
    {
        if (std::exchange(silent_, false))
            LoadSdl()->AudioQuit();
    }

    bool open_ = false;
    bool silent_ = false;
    std::chrono::steady_clock::time_point looked_;
};

// One sound on a device of its own.
class Playback
{
public:
    // `ended` is called once, on the audio thread.
    Playback(Wave wave, std::function<void()> ended)
        : wave_(std::move(wave)),
          ended_(std::move(ended))
          // A fifth of a second of silence pushes the last samples through the device's own buffers.
          ,
          tail_(static_cast<size_t>(wave_.spec.freq) / 5 * wave_.spec.channels *
                SDL_AUDIO_BITSIZE(wave_.spec.format) / 8)
    {
    }

    Playback(const Playback &) = delete;
    Playback &operator=(const Playback &) = delete;

    ~Playback()
    {
        if (device_ != 0)
            LoadSdl()->CloseAudioDevice(device_);
    }

    // False when there is no device.
    bool Open()
    {
        SDL_AudioSpec wanted = wave_.spec;
        // At most a thirtieth of a second: twice as much is still heard after a stop.
        wanted.samples = static_cast<Uint16>(std::bit_floor(static_cast<unsigned>(wanted.freq) / 30));
        wanted.callback = [](void *self, Uint8 *out, int length) {
            static_cast<Playback *>(self)->Fill(out, static_cast<size_t>(length));
        };
        wanted.userdata = this;
        // No change allowed: SDL converts to what the device takes.
        device_ = LoadSdl()->OpenAudioDevice(nullptr, 0, &wanted, &spec_, 0);
        return device_ != 0;
    }

    void Start() { LoadSdl()->PauseAudioDevice(device_, 0); }

private:
    void Fill(Uint8 *out, size_t length)
    {
        const size_t samples = std::min(length, wave_.length - position_);
        std::memcpy(out, wave_.samples.get() + position_, samples);
        position_ += samples;
        const size_t silence = length - samples;
        std::memset(out + samples, spec_.silence, silence);
        if (tail_ > 0 && tail_ <= silence)
            ended_();
        tail_ -= std::min(tail_, silence);
    }

    Wave wave_;
    std::function<void()> ended_;
    size_t tail_; // bytes of silence still to come before the end
    size_t position_ = 0;
    SDL_AudioSpec spec_{};
    SDL_AudioDeviceID device_ = 0;
};

// Nothing when the file is no wave or the device fails.
std::unique_ptr<Playback> Open(AudioSystem &audio, const std::string &path, std::function<void()> ended)
{
    std::optional<Wave> wave = LoadWave(path);
    if (!wave)
        return nullptr;
    auto playback = std::make_unique<Playback>(std::move(*wave), std::move(ended));
    if (audio.HasJustLooked() && playback->Open())
        return playback;
    const bool seasoned = audio.IsOpen();
    if (audio.Open() && playback->Open())
        return playback;
    if (seasoned) {
        // A sound server that has been restarted since takes a new connection only.
        audio.Close();
        if (audio.Open() && playback->Open())
            return playback;
    }
    if (audio.OpenSilent() && playback->Open())
        return playback;
    audio.Close();
    return nullptr;
}

} // namespace

void SoundPlayer::Work(State &state)
{
    AudioSystem audio;
    std::unique_ptr<Playback> playback;
    const auto ended = [&state] {
        const std::scoped_lock lock(state.mutex);
        state.ended = true;
        state.asked.notify_one();
    };
    std::unique_lock lock(state.mutex);
    while (!state.quit) {
        state.asked.wait(lock, [&] { return state.quit || state.ended || state.done != state.request; });
        const uint64_t request = state.request;
        const std::optional<std::string> path = std::exchange(state.path, std::nullopt);
        lock.unlock();
        playback.reset();
        std::string error;
        try {
            if (path)
                playback = Open(audio, *path, ended);
        } catch (const std::exception &exception) {
            error = Description(exception);
        }
        lock.lock();
        state.ended = false;
        const bool wanted = state.request == request;
        // SDL calls `ended` with its device locked: the device is not touched with our lock held.
        lock.unlock();
        if (playback && wanted)
            playback->Start();
        lock.lock();
        state.done = request;
        state.playing = playback != nullptr;
        state.silent = audio.IsSilent();
        state.error = error;
        state.answered.notify_one();
    }
    lock.unlock();
    playback.reset();
    audio.Close();
    if (const Sdl *sdl = LoadSdl())
        sdl->TLSCleanup(); // SDL keeps its error texts for each thread
    lock.lock();
    state.finished = true;
    state.answered.notify_one();
}

SoundPlayer::SoundPlayer(std::function<void(const std::string &)> report)
    : SoundPlayer(std::move(report), Patience())
{
}

SoundPlayer::SoundPlayer(std::function<void(const std::string &)> report, Patience patience)
    : report_(std::move(report)), patience_(patience), state_(std::make_shared<State>())
{
}

SoundPlayer::~SoundPlayer()
{
    std::unique_lock lock(state_->mutex);
    if (!state_->thread.joinable())
        return;
    state_->quit = true;
    state_->path.reset();
    state_->asked.notify_one();
    const bool finished = state_->answered.wait_for(lock, patience_.end, [this] { return state_->finished; });
    std::thread thread = std::move(state_->thread);
    lock.unlock();
    if (finished)
        thread.join();
    else
        thread.detach();
}

void SoundPlayer::PlaySound(const std::string &path)
{
    std::string message;
    try {
        message = Start(path);
    } catch (const std::exception &exception) {
        message = std::string(Unexpected) + Description(exception);
    }
    if (!message.empty())
        report_(message);
}

std::string SoundPlayer::Start(const std::string &path)
{
    State &state = *state_;
    std::unique_lock lock(state.mutex);
    if (!state.thread.joinable())
        state.thread = std::thread([shared = state_] { Work(*shared); });
    if (state.done < state.givenUp)
        return NoWave;
    state.path = path;
    const uint64_t request = ++state.request;
    state.asked.notify_one();
    if (!state.answered.wait_for(lock, patience_.start, [&] { return state.done >= request; })) {
        state.givenUp = request;
        state.path.reset();
        ++state.request;
        return NoWave;
    }
    if (!state.error.empty())
        return Unexpected + state.error;
    return state.playing ? std::string() : NoWave;
}

void SoundPlayer::StopSound()
{
    const std::scoped_lock lock(state_->mutex);
    state_->path.reset();
    ++state_->request;
    state_->asked.notify_one();
}

bool SoundPlayer::IsSilent() const
{
    const std::scoped_lock lock(state_->mutex);
    return state_->silent;
}

} // namespace paukfix
