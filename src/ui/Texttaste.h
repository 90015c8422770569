// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

class QKeyEvent;

namespace paukfix {

// Enter, on whichever part of the keyboard.
bool IstEingabetaste(const QKeyEvent &taste);

// Whether a key would change the text of a box, as opposed to those that move in it or copy from it. Undo and
// redo count only where `mitRueckgaengig` says so.
bool AendertText(const QKeyEvent &taste, bool mitRueckgaengig);

} // namespace paukfix
