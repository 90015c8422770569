// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LayoutBound.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace paukfix {

namespace {
constexpr int UsualHalfPoints = 24;
constexpr double EmPerHalfPoint = 2.0 / 3.0; // logical pixels
constexpr double EmsPerLine = 1.5;
constexpr double EmsPerChar = 0.7;
constexpr double BoxWidth = 100.0;    // logical pixels
constexpr double WideIndents = 200.0; // logical pixels; leave too little of a box for more than a character

// What one character adds: its part of a line, or a line of its own when it is big.
double CharHeight(double lineHeight)
{
    const double charWidth = lineHeight / EmsPerLine * EmsPerChar;
    return std::min(lineHeight, lineHeight * charWidth / BoxWidth);
}

int HalfPoints(const QTextCharFormat &format)
{
    if (format.hasProperty(QTextFormat::FontPixelSize))
        return static_cast<int>(std::lround(format.intProperty(QTextFormat::FontPixelSize) / EmPerHalfPoint));
    return static_cast<int>(std::lround(2.0 * format.fontPointSize()));
}
} // namespace

LayoutBound::LayoutBound(const QFont &defaultFont)
    : usualHalfPoints_(std::max(UsualHalfPoints, 2 * defaultFont.pointSize()))
{
}

double LayoutBound::LineHeight(int halfPoints) const
{
    return (halfPoints > 0 ? halfPoints : usualHalfPoints_) * EmPerHalfPoint * EmsPerLine;
}

void LayoutBound::AddCharacter(char16_t c, int halfPoints)
{
    const double lineHeight = LineHeight(halfPoints);
    height_ += c == u'\u2028' || c == u'\t' ? lineHeight : CharHeight(lineHeight);
    paragraphLines_ += lineHeight;
}

bool LayoutBound::EndParagraph(int halfPoints, double indents, double spaces)
{
    height_ += LineHeight(halfPoints) + spaces;
    const double linesOfOneChar = std::exchange(paragraphLines_, 0);
    if (indents <= WideIndents)
        return true;
    if (height_ + linesOfOneChar > MaxHeight)
        return false;
    height_ += linesOfOneChar;
    return true;
}

void LayoutBound::Add(const QTextDocument &document, int from, int to)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.position() >= from && block.position() + block.length() <= to)
            continue;
        int halfPoints = HalfPoints(block.charFormat());
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            halfPoints = HalfPoints(fragment.charFormat());
            int position = fragment.position();
            for (const QChar c : fragment.text()) {
                if (position < from || position >= to)
                    AddCharacter(c.unicode(), halfPoints);
                ++position;
            }
            AddRun();
        }
        const QTextBlockFormat format = block.blockFormat();
        const double indents =
            format.leftMargin() + format.rightMargin() + std::max(format.textIndent(), 0.0);
        if (!EndParagraph(halfPoints, indents, format.topMargin() + format.bottomMargin()))
            height_ += MaxHeight;
    }
}

} // namespace paukfix
