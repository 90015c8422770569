// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <cstdint>
#include <numbers>
#include <vector>

namespace paukfix {

// The little that the synthesised sounds share. Samples are mono doubles, full scale is -1 to 1.
namespace Klang {

inline constexpr int Rate = 44100; // samples a second
inline constexpr double Tau = 2 * std::numbers::pi;

using Spur = std::vector<double>;

inline std::size_t Samples(double seconds)
{
    return static_cast<std::size_t>(seconds * Rate);
}

// Random numbers in [0, 1), the same in every run.
class Zufall
{
public:
    explicit Zufall(std::uint64_t seed) : state_(seed) {}

    double Next();

    double Between(double low, double high) { return low + (high - low) * Next(); }

private:
    std::uint64_t state_;
};

// Lets through what lies around a frequency (Hz); a high quality rings longer.
class Bandpass
{
public:
    Bandpass(double frequency, double quality);
    double Filter(double in);

private:
    double b0_, a1_, a2_;
    double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

// Adds `sound` from second `start` on; what would lie behind the end of `track` is left out.
void Mix(Spur &track, const Spur &sound, double start, double gain);

// What a small room gives back of `dry`; `spread` (samples) makes the two sides of a stereo sound differ.
Spur Room(const Spur &dry, int spread);

// Brings the loudest sample of all sides to `peak` and fades the last `fade` seconds out.
void Finish(std::vector<Spur> &sides, double peak, double fade);

// Writes 16-bit PCM, one side mono, two stereo. Throws std::runtime_error.
void WriteWave(const QString &path, const std::vector<Spur> &sides);

} // namespace Klang

} // namespace paukfix
