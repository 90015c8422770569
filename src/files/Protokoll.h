// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLoggingCategory>

namespace paukfix {

// What the program logs, each silent unless asked for: "QT_LOGGING_RULES=paukfix.*=true" has all of it on the
// terminal.

Q_DECLARE_LOGGING_CATEGORY(LogMeldung)       // paukfix.meldung: the text of every message that is shown
Q_DECLARE_LOGGING_CATEGORY(LogEinstellungen) // paukfix.einstellungen: which settings are read and written
Q_DECLARE_LOGGING_CATEGORY(LogDruck)         // paukfix.druck: what the printing system answers

} // namespace paukfix
