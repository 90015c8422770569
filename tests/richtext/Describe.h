// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CharFormat.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>

#include <cmath>

namespace paukfix {

// A document as one readable text, for comparing: paragraphs one a line, each with its format in parentheses
// where it has one, pieces of text with theirs in brackets: "(center li720)[b 12pt]bold[] plain". A line
// separator is written as "/".

inline QString DescribeCharFormat(const QTextCharFormat &format)
{
    QStringList parts;
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty())
        parts << families.join(u',');
    else if (format.hasProperty(SymbolFontProperty))
        parts << format.stringProperty(SymbolFontProperty);
    if (format.fontPointSize() > 0)
        parts << QString::number(format.fontPointSize()) + "pt";
    if (format.fontWeight() >= QFont::DemiBold)
        parts << "b";
    if (format.fontItalic())
        parts << "i";
    static const QStringList underlines{"", "u", "dash", "dot", "dashdot", "dashdotdot", "wave"};
    if (format.underlineStyle() != QTextCharFormat::NoUnderline)
        parts << underlines.value(format.underlineStyle(), "?");
    if (format.fontStrikeOut())
        parts << "s";
    if (format.foreground().style() != Qt::NoBrush)
        parts << format.foreground().color().name();
    if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript)
        parts << "super";
    if (format.verticalAlignment() == QTextCharFormat::AlignSubScript)
        parts << "sub";
    const int offset = format.intProperty(CharOffsetProperty);
    if (offset != 0)
        parts << (offset > 0 ? "up" : "dn") + QString::number(std::abs(offset));
    return parts.join(u' ');
}

inline QString DescribeBlockFormat(const QTextBlockFormat &format)
{
    constexpr double TwipsPerPixel = 15;
    QStringList parts;
    if (format.alignment().testFlag(Qt::AlignHCenter))
        parts << "center";
    if (format.alignment().testFlag(Qt::AlignRight))
        parts << "right";
    if (format.alignment().testFlag(Qt::AlignJustify))
        parts << "justify";
    const auto length = [&parts](const char *name, double pixels) {
        if (pixels != 0)
            parts << name + QString::number(std::lround(pixels * TwipsPerPixel));
    };
    length("li", format.leftMargin());
    length("ri", format.rightMargin());
    length("fi", format.textIndent());
    length("sb", format.topMargin());
    length("sa", format.bottomMargin());
    static const QStringList tabNames{"tab", "rtab", "ctab", "dtab"};
    const QList<QTextOption::Tab> tabs = format.tabPositions();
    for (const QTextOption::Tab &tab : tabs)
        parts << tabNames.value(tab.type) + QString::number(std::lround(tab.position * TwipsPerPixel));
    return parts.isEmpty() ? QString() : "(" + parts.join(u' ') + ")";
}

inline QString Describe(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString line = DescribeBlockFormat(block.blockFormat());
        QString last;
        if (block.length() == 1) { // what would be typed there
            const QString format = DescribeCharFormat(block.charFormat());
            line += format.isEmpty() ? QString() : "[" + format + "]";
        }
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QString format = DescribeCharFormat(part.fragment().charFormat());
            if (format != last)
                line += "[" + format + "]";
            line += part.fragment().text();
            last = format;
        }
        lines << line.replace(QChar::LineSeparator, u'/');
    }
    return lines.join(u'\n');
}

} // namespace paukfix
