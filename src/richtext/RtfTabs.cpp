// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfTabs.h"

#include <algorithm>

namespace paukfix {

namespace {
constexpr int LastMultiple = 31'680; // twips; 22 inches
constexpr qsizetype MaxStops = 128;

int TwipsOf(const QTextOption::Tab &tab)
{
    return Twips(tab.position);
}

bool IsMultiple(const QTextOption::Tab &tab, int tabWidth)
{
    return tab.type == QTextOption::LeftTab && TwipsOf(tab) % tabWidth == 0;
}
} // namespace

QList<QTextOption::Tab> ShownTabs(const RtfParagraphState &paragraph, int tabWidth, bool tabbed)
{
    QList<QTextOption::Tab> tabs = paragraph.tabs;
    const int start = paragraph.left + paragraph.first;
    const auto isIndent = [&](const QTextOption::Tab &tab) { return TwipsOf(tab) == paragraph.left; };
    if (paragraph.first < 0 && std::ranges::none_of(tabs, isIndent))
        tabs.append({Pixels(paragraph.left), QTextOption::LeftTab});
    std::ranges::stable_sort(tabs, {}, TwipsOf);
    if (tabbed && start != 0 && tabWidth > 0) {
        const int last = std::max({0, start, tabs.isEmpty() ? 0 : TwipsOf(tabs.last())});
        for (int stop = (last / tabWidth + 1) * tabWidth; stop <= LastMultiple && tabs.size() < MaxStops;
             stop += tabWidth)
            tabs.append({Pixels(stop), QTextOption::LeftTab});
    }
    for (QTextOption::Tab &tab : tabs)
        tab.position -= Pixels(start);
    return tabs;
}

QList<QTextOption::Tab> WrittenTabs(const QList<QTextOption::Tab> &shown, RtfParagraphState paragraph,
                                    int tabWidth, bool tabbed)
{
    const auto isEnough = [&](const QList<QTextOption::Tab> &tabs) {
        paragraph.tabs = tabs;
        const auto same = [](const QTextOption::Tab &a, const QTextOption::Tab &b) {
            return a.type == b.type && TwipsOf(a) == TwipsOf(b);
        };
        return std::ranges::equal(ShownTabs(paragraph, tabWidth, tabbed), shown, same);
    };
    QList<QTextOption::Tab> all = shown;
    for (QTextOption::Tab &tab : all)
        tab.position += Pixels(paragraph.left + paragraph.first);
    QList<QTextOption::Tab> withoutIndent = all;
    withoutIndent.removeIf([&](const QTextOption::Tab &tab) {
        return paragraph.first < 0 && tab.type == QTextOption::LeftTab && TwipsOf(tab) == paragraph.left;
    });
    for (QList<QTextOption::Tab> tabs : {withoutIndent, all}) {
        QList<QTextOption::Tab> withoutMultiples = tabs;
        while (tabWidth > 0 && !withoutMultiples.isEmpty() && IsMultiple(withoutMultiples.last(), tabWidth))
            withoutMultiples.removeLast();
        if (isEnough(withoutMultiples))
            return withoutMultiples;
        if (isEnough(tabs))
            return tabs;
    }
    return all;
}

} // namespace paukfix
