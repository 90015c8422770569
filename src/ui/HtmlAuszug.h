// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// Why a formatted text is not taken.
enum class Ablehnung
{
    Keine,
    ZuGross,        // more than a card can hold
    ZuVerschachtelt // the toolkit would read it for seconds, however little text it is
};

struct BereitesHtml
{
    QString html;
    Ablehnung ablehnung = Ablehnung::Keine; // else there is no text
};

// HTML made ready for the toolkit's reader: what is hidden (display:none, hidden) is taken out, and the
// number with which a list starts, which the reader does not know, is put where `Listenanfang` finds it.
//
// A text that the reader would take seconds for is refused: it takes the square of how deep elements lie in
// each other and of how many items a list has, and looks at each rule of a style sheet for each tag.
BereitesHtml HtmlAuszug(const QString &html);

// The first number of a list, from its number prefix: 1 where none was given.
int Listenanfang(const QString &vorsatz);

} // namespace paukfix
