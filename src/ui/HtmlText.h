// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "HtmlAuszug.h"

#include <QFont>
#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>

#include <memory>

namespace paukfix {

// What is offered as formatted text.
struct Angebot
{
    std::unique_ptr<QTextDocument> text; // null where there is plain text at best
    Ablehnung ablehnung = Ablehnung::Keine;
};

// HTML of other programs as a text of paragraphs: pictures and hidden parts are left out, list items get
// their bullet or number, the rows of a table become paragraphs and its cells stand behind tabs. Nothing is
// fetched from anywhere. Text without a font or size gets that of `amCaret`, and sizes that are given as
// "larger" are of that one, or of `standard` where the caret has none.
//
// None for a text that is too much for a card, or that the toolkit would read for seconds.
Angebot TextAusHtml(const QString &html, const QTextCharFormat &amCaret, const QFont &standard);

} // namespace paukfix
