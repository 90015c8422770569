// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RtfState.h"

namespace paukfix {

inline constexpr int UsualTabWidth = 720; // twips between the stops of a document that says nothing

// RTF counts tab stops from the margin and takes some for granted: the indent of a hanging paragraph, and
// every multiple of the document's tab width behind the last one. Qt counts from where the first line begins,
// and knows the multiples only, from there. `tabbed` says that the paragraph has tabs: only then the
// multiples are worth saying. Widths in twips, lengths of `paragraph` too, positions in logical pixels.

// A paragraph's stops for Qt, in order.
QList<QTextOption::Tab> ShownTabs(const RtfParagraphState &paragraph, int tabWidth, bool tabbed);

// The fewest stops for RTF that ShownTabs makes `shown` of; those of `paragraph` do not count.
QList<QTextOption::Tab> WrittenTabs(const QList<QTextOption::Tab> &shown, RtfParagraphState paragraph,
                                    int tabWidth, bool tabbed);

} // namespace paukfix
