// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QFont>
#include <QTextCharFormat>
#include <QTextDocumentFragment>

#include <memory>
#include <optional>

class QMimeData;

// Formatted text on its way through the clipboard and the mouse's drags.

// Part of a document with that default font: as RTF, which keeps everything, as HTML and as plain text.
std::unique_ptr<QMimeData> MimeVon(const QTextDocumentFragment &fragment, const QFont &schrift = {});

// The formatted text that is offered, reduced to what a card can hold: no pictures, tables or backgrounds,
// the items of lists as paragraphs with their bullet or number, and nothing is fetched from anywhere. HTML
// that names no font or size gets those of `amCaret`, and sizes that it gives as "larger" are of that one, or
// of `standard` where the caret has none. Nothing where there is plain text at best.
std::optional<QTextDocumentFragment> FragmentVon(const QMimeData &mime, const QTextCharFormat &amCaret = {},
                                                 const QFont &standard = {});

// Whether there is text in any form.
bool HatText(const QMimeData &mime);
