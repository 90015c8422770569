// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <utility>
#include <vector>

namespace paukfix {

// Keys that two neighbours on one page show not to exist: whole numbers between one entry of a tree's page
// and the next.
class KeyGaps
{
public:
    // Takes the gaps of a page with these keys in the page's order. A page whose keys do not ascend shows
    // nothing, and neither do its first and its last gap: a single wrong byte in the outermost key would
    // stretch them over the keys of other pages.
    void AddPage(const std::vector<double> &keys);

    // Before the first question, after the last page.
    void Finish();

    bool Contains(double key) const;

private:
    void Add(double below, double above);

    std::vector<std::pair<double, double>> gaps_; // the keys between two others; from Finish() on apart
};

} // namespace paukfix
