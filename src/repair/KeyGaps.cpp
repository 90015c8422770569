// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KeyGaps.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace paukfix {

namespace {

// What stands beyond proves nothing, so that memory stays bounded.
constexpr std::size_t MostGaps = 500'000;
// From here on not every whole number is a double.
constexpr double MostKey = 0x1p53;

} // namespace

void KeyGaps::AddPage(const std::vector<double> &keys)
{
    if (std::adjacent_find(keys.begin(), keys.end(), std::greater_equal<>()) != keys.end())
        return;
    for (std::size_t i = 2; i + 1 < keys.size(); ++i)
        Add(keys[i - 1], keys[i]);
}

void KeyGaps::Add(double below, double above)
{
    if (below < -MostKey || above > MostKey || below != std::floor(below) || above != std::floor(above))
        return;
    if (above - below > 1 && gaps_.size() < MostGaps)
        gaps_.emplace_back(below + 1, above - 1);
}

void KeyGaps::Finish()
{
    std::sort(gaps_.begin(), gaps_.end());
    std::size_t last = 0;
    for (std::size_t i = 1; i < gaps_.size(); ++i)
        if (gaps_[i].first <= gaps_[last].second)
            gaps_[last].second = std::max(gaps_[last].second, gaps_[i].second);
        else
            gaps_[++last] = gaps_[i];
    gaps_.resize(gaps_.empty() ? 0 : last + 1);
}

bool KeyGaps::Contains(double key) const
{
    if (key != std::floor(key)) // not-a-number too
        return false;
    const auto behind = std::upper_bound(gaps_.begin(), gaps_.end(), key,
                                         [](double value, const auto &gap) { return value < gap.first; });
    return behind != gaps_.begin() && key <= std::prev(behind)->second;
}

} // namespace paukfix
