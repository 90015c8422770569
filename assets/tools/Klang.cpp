// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Klang.h"

#include <QDataStream>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace Klang {

double Zufall::Next()
{
    // splitmix64
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return static_cast<double>((z ^ (z >> 31)) >> 11) / 9007199254740992.0; // 2^53
}

Bandpass::Bandpass(double frequency, double quality)
{
    const double omega = Tau * frequency / Rate;
    const double alpha = std::sin(omega) / (2 * quality);
    b0_ = alpha / (1 + alpha);
    a1_ = -2 * std::cos(omega) / (1 + alpha);
    a2_ = (1 - alpha) / (1 + alpha);
}

double Bandpass::Filter(double in)
{
    const double out = b0_ * (in - x2_) - a1_ * y1_ - a2_ * y2_;
    x2_ = x1_;
    x1_ = in;
    y2_ = y1_;
    y1_ = out;
    return out;
}

void Mix(Spur &track, const Spur &sound, double start, double gain)
{
    const std::size_t first = Samples(start);
    for (std::size_t i = 0; i < sound.size() && first + i < track.size(); ++i)
        track[first + i] += gain * sound[i];
}

namespace {

// Echoes that follow each other closely and lose their treble on the way.
void AddComb(Spur &wet, const Spur &dry, std::size_t delay, double feedback)
{
    constexpr double Damping = 0.35;
    Spur line(delay, 0.0);
    double low = 0;
    for (std::size_t i = 0; i < dry.size(); ++i) {
        double &slot = line[i % delay];
        const double out = slot;
        low = out * (1 - Damping) + low * Damping;
        slot = dry[i] + low * feedback;
        wet[i] += out;
    }
}

// Blurs the echoes without colouring them.
void Allpass(Spur &wet, std::size_t delay)
{
    constexpr double Feedback = 0.5;
    Spur line(delay, 0.0);
    for (std::size_t i = 0; i < wet.size(); ++i) {
        double &slot = line[i % delay];
        const double out = slot - Feedback * wet[i];
        slot = wet[i] + Feedback * out;
        wet[i] = out;
    }
}

} // namespace

Spur Room(const Spur &dry, int spread)
{
    Spur wet(dry.size(), 0.0);
    for (const int delay : {1116, 1188, 1277, 1356, 1422, 1491})
        AddComb(wet, dry, static_cast<std::size_t>(delay) + static_cast<std::size_t>(spread), 0.72);
    for (const int delay : {556, 441, 225})
        Allpass(wet, static_cast<std::size_t>(delay) + static_cast<std::size_t>(spread));
    return wet;
}

void Finish(std::vector<Spur> &sides, double peak, double fade)
{
    double loudest = 1e-9;
    for (Spur &side : sides) {
        const std::size_t length = std::min(side.size(), Samples(fade));
        for (std::size_t i = 0; i < length; ++i) {
            const double left = static_cast<double>(i) / static_cast<double>(length); // 0 at the very end
            side[side.size() - 1 - i] *= 0.5 - 0.5 * std::cos(left * Tau / 2);
        }
        for (const double sample : side)
            loudest = std::max(loudest, std::abs(sample));
    }
    for (Spur &side : sides)
        for (double &sample : side)
            sample *= peak / loudest;
}

void WriteWave(const QString &path, const std::vector<Spur> &sides)
{
    const auto channels = static_cast<quint16>(sides.size());
    const auto frame = static_cast<quint16>(channels * sizeof(qint16));
    const auto bytes = static_cast<quint32>(sides.at(0).size() * frame);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error((path + u": "_s + file.errorString()).toStdString());
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32{36 + bytes};
    out.writeRawData("WAVEfmt ", 8);
    out << quint32{16} << quint16{1} << channels << quint32{Rate} << static_cast<quint32>(Rate) * frame
        << frame << quint16{16};
    out.writeRawData("data", 4);
    out << bytes;
    for (std::size_t i = 0; i < sides[0].size(); ++i)
        for (const Spur &side : sides)
            out << static_cast<qint16>(std::lround(std::clamp(side[i], -1.0, 1.0) * 32767));
    if (out.status() != QDataStream::Ok || !file.commit())
        throw std::runtime_error((path + u": "_s + file.errorString()).toStdString());
}

} // namespace Klang

} // namespace paukfix
