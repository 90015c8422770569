// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// More than any line shows.
inline constexpr qsizetype KurztextLaenge = 1000;

// The beginning of a text, with "…" where it goes on. A card file of somebody else may name a topic or a file
// with megabytes: to measure or lay out all of it takes seconds.
inline QString Kurztext(const QString &text, qsizetype hoechstens = KurztextLaenge)
{
    if (text.size() <= hoechstens)
        return text;
    QString kurz = text.left(hoechstens);
    if (kurz.back().isHighSurrogate())
        kurz.chop(1);
    return kurz + QChar(u'…');
}

// A word that is too long for any line, as a file's name may be, can be broken from its 50th letter on: else
// it would make its window wider than the screen. Behind a slash it breaks anyway.
inline QString Umbrechbar(const QString &text)
{
    constexpr qsizetype LaengstesWort = 50;
    QString umbrechbar;
    umbrechbar.reserve(text.size());
    qsizetype wort = 0;
    for (const QChar c : text) {
        wort = c.isSpace() || c == u'/' ? 0 : wort + 1;
        if (wort > LaengstesWort && !c.isLowSurrogate()) {
            umbrechbar += QChar(u'\u200B'); // a line may break here
            wort = 1;
        }
        umbrechbar += c;
    }
    return umbrechbar;
}

// Each line break becomes a blank; none at the ends.
inline QString Einzeilig(const QString &text)
{
    QString zeile;
    zeile.reserve(text.size());
    bool umbruch = false;
    for (const QChar c : text) {
        if (c == u'\r' || c == u'\n' || c == u'\v' || c == u'\f' || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator) {
            umbruch = true;
            continue;
        }
        if (umbruch && !zeile.isEmpty())
            zeile += u' ';
        umbruch = false;
        zeile += c;
    }
    return zeile;
}

} // namespace paukfix
