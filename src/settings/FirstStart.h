// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "ProgramDirectory.h"

namespace paukfix {

// What the first start of this version makes for a user: moved or new files. All functions throw StoreError.

// The path of what is called `name` in `directory`.
QString In(const QString &directory, const QString &name);
bool HasFile(const QString &directory, const QString &name);

// Whether the program is installed in the very place where earlier versions kept the user's files, as it is
// below "~/.local".
bool IsShared(const ProgramPlaces &places);

// What `former` holds of the user's, the settings last. Where the program is installed there too, its own
// files are not the user's, and the settings are not there any more.
QStringList FormerNames(const ProgramPlaces &places);

// Moves the user's files of an earlier version to where they are today; the old name leads there. False where
// there are none, or where they cannot all be moved: nothing is copied, for a card file and its journal must
// never be parted. A kill in between is made good by the next start, as the settings go last. Where the
// program is installed in the same place, its files stay there, and FillOwn makes the settings.
bool MoveFormer(const ProgramPlaces &places);

// Puts the settings and the sample boxes into the user's directory, where nobody has done so. A directory in
// it shows that this has begun; every file comes there whole, in one rename.
void FillOwn(const ProgramPlaces &places);

} // namespace paukfix
