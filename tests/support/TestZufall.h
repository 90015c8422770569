// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Zufall.h"

#include <deque>
#include <initializer_list>

namespace paukfix {

// Random numbers that are said beforehand, then 0.
class TestZufall final : public Zufall
{
public:
    TestZufall() = default;

    explicit TestZufall(std::deque<double> folge) : zahlen(std::move(folge)) {}

    double Rnd() override
    {
        if (zahlen.empty())
            return 0;
        const double zahl = zahlen.front();
        zahlen.pop_front();
        return zahl;
    }

    void Wuerfe(std::initializer_list<int> augen)
    {
        for (const int i : augen)
            zahlen.push_back((i - 0.5) / 6);
    }

    std::deque<double> zahlen;
};

} // namespace paukfix
