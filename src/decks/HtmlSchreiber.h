// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// A text of a card as HTML, from which HtmlLesen makes the same text with the same formats. `reich` is RTF or
// plain.
QString HtmlAusKartentext(const QString &reich);

} // namespace paukfix
