// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QFont>

class QTextBlockFormat;
class QTextDocument;

namespace paukfix {

// How much of a text Qt lays out in a second or two. Its layout takes up to 50 bytes a character and 500 a
// line, takes its time for each run of one format, and does not come back from lines below 8,388,607 pixels.
// Heights are estimates for narrow boxes and generous fonts. At 12 points a million characters, 80,000 short
// lines or 80,000 runs are the most.
class LayoutBound
{
public:
    // A size of 0 half-points is the default font's.
    explicit LayoutBound(const QFont &defaultFont);

    void AddCharacter(char16_t c, int halfPoints);

    void AddRun() { ++runs_; }

    // Ends a paragraph with these lengths in logical pixels. False where its indents would give each
    // character a line of its own and that would be too much: it must do without them, and counts without.
    bool EndParagraph(int halfPoints, double indents, double spaces);

    // All of a document but the characters from `from` up to `to`.
    void Add(const QTextDocument &document, int from = 0, int to = 0);

    bool isExceeded() const { return height_ > MaxHeight || runs_ > MaxRuns; }

private:
    static constexpr double MaxHeight = 3'000'000; // logical pixels
    static constexpr qsizetype MaxRuns = 80'000;

    double LineHeight(int halfPoints) const;

    int usualHalfPoints_;
    double height_ = 0;
    double paragraphLines_ = 0; // the paragraph's height if each character had a line of its own
    qsizetype runs_ = 0;
};

} // namespace paukfix
