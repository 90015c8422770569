// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// The part of a stored media name behind its last "\" or "/": names of other directories are never opened.
QString BlosserName(const QString &name);

// The path of the picture or sound that a card names, in `verzeichnis`: the file of exactly this name or,
// where there is none, the one whose name differs only in case (of several the first in the order of their
// characters). Where there is none either, or more than 50,000 names would have to be read for it, the path
// of the exact name, at which there is nothing.
QString Mediendatei(const QString &verzeichnis, const QString &name);

} // namespace paukfix
