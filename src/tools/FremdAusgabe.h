// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkbank.h"

namespace paukfix {

enum class Fremdform
{
    Anki, // a package of schema 11
    Kvtml // KVTML 2
};

// Writes the open box as a deck of other programs to the file `ziel`, which takes the place of an old one
// when it is whole. `rest` gets what the form cannot hold. Where it fails or is cancelled, nothing was
// written, and that was told. Moves the cursor.
Ausgang FremdAusgeben(const Werkbank &bank, const QString &ziel, Fremdform form, QString &rest);

} // namespace paukfix
