// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <random>

namespace paukfix {

// Random numbers, passed in so that a test can say what is drawn.
class Zufall
{
public:
    Zufall() = default;
    Zufall(const Zufall &) = delete;
    Zufall &operator=(const Zufall &) = delete;
    virtual ~Zufall() = default;

    // A number in [0, 1).
    virtual double Rnd() = 0;
};

// Never seeded, on purpose: every run of the program draws the same sequence.
class MersenneZufall final : public Zufall
{
public:
    double Rnd() override { return static_cast<double>(generator_()) / 4294967296.0; }

private:
    std::mt19937 generator_;
};

} // namespace paukfix
