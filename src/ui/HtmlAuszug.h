// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <optional>

// HTML made ready for the toolkit's reader: what is hidden (display:none, hidden) is taken out, and the
// number with which a list starts, which the reader does not know, is put where `Listenanfang` finds it.
//
// Nothing for a text that the reader would take seconds for: it takes the square of how deep elements lie in
// each other and of how many items a list has, and looks at each rule of a style sheet for each tag.
std::optional<QString> HtmlAuszug(const QString &html);

// The first number of a list, from its number prefix: 1 where none was given.
int Listenanfang(const QString &vorsatz);
