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

// May a picture or sound of this name travel with the cards that name it? It has no directory, nothing that
// cannot be seen, and the ending of a picture or sound: nothing else that lies beside a card file (settings,
// other boxes, their journals) is ever copied for a card's sake.
bool IstMedienname(const QString &name);

// `name`, or "name-2", "name-3", ... for a `nummer` above 1, shortened where a card or a file system could
// not hold it.
QString NummerierterName(const QString &name, int nummer);

} // namespace paukfix
