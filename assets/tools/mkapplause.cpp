// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// mkapplause OUT.wav: a few people clap in a small room, and a bell says "right".
#include "Klang.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace paukfix;

using namespace Klang;

namespace {

constexpr double Length = 2.6; // seconds

// One clap: a burst of noise that hollow hands colour, with the soft slap before it.
Spur Clap(Zufall &zufall, double hollow)
{
    Bandpass hands(hollow, 1.6);
    Bandpass air(hollow * 2.3, 0.9);
    const double decay = zufall.Between(0.008, 0.014);
    double soft = 0; // palms have little treble
    Spur clap(Samples(0.09));
    for (std::size_t i = 0; i < clap.size(); ++i) {
        const double t = static_cast<double>(i) / Rate;
        const double attack = std::min(1.0, t / 0.0015);
        soft += 0.35 * (zufall.Between(-1, 1) - soft);
        const double noise = soft * attack * std::exp(-t / decay);
        clap[i] = 3.2 * hands.Filter(noise) + 1.0 * air.Filter(noise);
    }
    return clap;
}

// A struck metal bar with its inharmonic partials.
Spur Bell(double frequency)
{
    struct Partial
    {
        double ratio, gain, decay;
    };

    Spur bell(Samples(2.0));
    for (const Partial &partial :
         {Partial{1, 1, 0.55}, Partial{2.756, 0.28, 0.22}, Partial{5.404, 0.10, 0.08}}) {
        for (std::size_t i = 0; i < bell.size(); ++i) {
            const double t = static_cast<double>(i) / Rate;
            const double attack = std::min(1.0, t / 0.003);
            bell[i] += partial.gain * attack * std::exp(-t / partial.decay) *
                       std::sin(Tau * frequency * partial.ratio * t);
        }
    }
    return bell;
}

// How eagerly people clap at second t: quickly there, slowly going.
double Eagerness(double t)
{
    return std::min(1.0, t / 0.25) * (t < 1.1 ? 1.0 : std::exp(-(t - 1.1) / 0.55));
}

std::vector<Spur> Applause()
{
    constexpr int People = 11;
    Zufall zufall(1972);
    Spur left(Samples(Length), 0.0);
    Spur right(Samples(Length), 0.0);
    for (int person = 0; person < People; ++person) {
        const double place = zufall.Between(0.15, 0.85); // 0 far left, 1 far right
        const double hollow = zufall.Between(850, 1650);
        const double pace = zufall.Between(0.15, 0.22);
        const double strength = zufall.Between(0.5, 1.0);
        double t = zufall.Between(0.05, 0.35);
        while (t < Length - 0.3) {
            const Spur clap = Clap(zufall, hollow * zufall.Between(0.94, 1.06));
            const double gain = strength * Eagerness(t) * zufall.Between(0.7, 1.0);
            Mix(left, clap, t, gain * std::sqrt(1 - place));
            Mix(right, clap, t, gain * std::sqrt(place));
            t += pace * zufall.Between(0.9, 1.1);
        }
    }

    struct Note
    {
        double start, frequency, gain;
    };

    // C, E, G and the C above, struck quickly
    for (const Note &note : {Note{0.00, 1046.5, 0.26}, Note{0.09, 1318.5, 0.26}, Note{0.18, 1568.0, 0.26},
                             Note{0.29, 2093.0, 0.30}}) {
        const Spur bell = Bell(note.frequency);
        Mix(left, bell, note.start, note.gain);
        Mix(right, bell, note.start, note.gain);
    }
    constexpr double RoomGain = 0.09;
    const Spur leftRoom = Room(left, 0);
    const Spur rightRoom = Room(right, 23);
    Mix(left, leftRoom, 0, RoomGain);
    Mix(right, rightRoom, 0, RoomGain);
    return {left, right};
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: mkapplause OUT.wav\n", stderr);
        return 1;
    }
    try {
        std::vector<Spur> sides = Applause();
        Finish(sides, 0.7, 0.6);
        WriteWave(arguments[1], sides);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "mkapplause: %s\n", error.what());
        return 1;
    }
    return 0;
}
