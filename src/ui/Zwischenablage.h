// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "HtmlText.h"

#include <QFont>
#include <QTextCharFormat>
#include <QTextDocumentFragment>

#include <memory>

class QMimeData;

namespace paukfix {

// Formatted text on its way through the clipboard and the mouse's drags.

// Part of a document with that default font: as RTF, which keeps everything, as HTML and as plain text.
std::unique_ptr<QMimeData> MimeVon(const QTextDocumentFragment &fragment, const QFont &schrift = {});

// Reduced to what a card can hold: RTF as our reader takes it, HTML as `TextAusHtml` does.
Angebot AngebotVon(const QMimeData &mime, const QTextCharFormat &amCaret = {}, const QFont &standard = {});

// The text of it in all its forms, for when its owner may be gone.
std::unique_ptr<QMimeData> Textkopie(const QMimeData &mime);

// Whether there is text in any form.
bool HatText(const QMimeData &mime);

} // namespace paukfix
