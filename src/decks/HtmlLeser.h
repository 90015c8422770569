// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Lauftext.h"

#include <QString>
#include <QStringList>

namespace paukfix {

// What of a text in HTML a card cannot hold.
enum class HtmlRest : unsigned
{
    Hintergrund = 1U << 0U,
    Verweis = 1U << 1U,
    Video = 1U << 2U,
    Tabelle = 1U << 3U, // its cells become lines
    Liste = 1U << 4U,   // its items become lines
    Skript = 1U << 5U
};

// A text in HTML, read.
struct GelesenesHtml
{
    Lauftext text;
    // What is shown and played with it, as named there, in order. Names that lead to the net, or that are the
    // picture itself ("data:"), are among them.
    QStringList bilder, toene;
    unsigned rest = 0; // of HtmlRest
};

// Reads HTML as other programs keep it, sound or not, in linear time. Nothing is fetched. A break of lines is
// <br> and the edge of any block; white space is one blank, and none at the edges of lines. "[sound:NAME]" is
// a sound.
GelesenesHtml HtmlLesen(const QString &html);

// The text alone, in one line.
QString HtmlOhneTags(const QString &html);

// Text as HTML.
QString HtmlMaskiert(const QString &text);

// What "&NAME;" stands for, given NAME ("amp", "#228", "#xE4"); empty where nothing is known of it.
QString HtmlEntity(QStringView name);

} // namespace paukfix
