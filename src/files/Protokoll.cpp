// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Protokoll.h"

namespace paukfix {

Q_LOGGING_CATEGORY(LogMeldung, "paukfix.meldung", QtWarningMsg)
Q_LOGGING_CATEGORY(LogEinstellungen, "paukfix.einstellungen", QtWarningMsg)
Q_LOGGING_CATEGORY(LogDruck, "paukfix.druck", QtWarningMsg)

} // namespace paukfix
