// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Texttaste.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace paukfix {

bool IstEingabetaste(const QKeyEvent &taste)
{
    return taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter;
}

bool AendertText(const QKeyEvent &taste, bool mitRueckgaengig)
{
    const auto ist = [&taste](QKeySequence::StandardKey standard) { return taste.matches(standard); };
    constexpr std::array Aendernde{QKeySequence::Paste,
                                   QKeySequence::Cut,
                                   QKeySequence::Delete,
                                   QKeySequence::Backspace,
                                   QKeySequence::DeleteStartOfWord,
                                   QKeySequence::DeleteEndOfWord,
                                   QKeySequence::DeleteEndOfLine,
                                   QKeySequence::DeleteCompleteLine,
                                   QKeySequence::InsertParagraphSeparator,
                                   QKeySequence::InsertLineSeparator};
    if (std::ranges::any_of(Aendernde, ist))
        return true;
    if (ist(QKeySequence::Undo) || ist(QKeySequence::Redo))
        return mitRueckgaengig;
    if (IstEingabetaste(taste) || taste.key() == Qt::Key_Backspace)
        return true;
    const bool befehl =
        taste.modifiers().testFlag(Qt::ControlModifier) != taste.modifiers().testFlag(Qt::AltModifier);
    return !befehl && !taste.text().isEmpty() && taste.text().front().isPrint();
}

} // namespace paukfix
