// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <SDL.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace paukfix {

// A wave in memory, decoded to samples that an audio device takes.
struct Wave
{
    struct Release
    {
        void operator()(Uint8 *wave) const;
    };

    SDL_AudioSpec spec{}; // rate, format, channels
    std::unique_ptr<Uint8, Release> samples;
    size_t length = 0; // bytes
};

// How long it plays.
double Seconds(const Wave &wave);

// What of a wave is played at most, in bytes of samples: twelve minutes of stereo in CD quality. The rest of
// a longer one is not read, whatever its header says.
inline constexpr size_t MaxWaveBytes = size_t{128} * 1024 * 1024;

// Decodes a wave file: PCM of 8, 16, 24 and 32 bits, 32-bit float, A-law, µ-law, IMA and MS ADPCM. Lengths in
// the header that cannot be right are taken as "up to the end". Nothing where the bytes are no such wave,
// or the machine has no SDL.
std::optional<Wave> DecodeWave(std::vector<Uint8> file);

// The same for a file, `path` in UTF-8. Nothing where it cannot be read, too.
std::optional<Wave> LoadWave(const std::string &path);

// Whether LoadWave would give a wave. Without SDL the file's parts tell.
bool IsWave(const std::string &path);

} // namespace paukfix
