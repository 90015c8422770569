// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <QString>

namespace paukfix {

// A package is unpacked into a directory of its name beside it: "Natur.pzbz" to "Natur/Natur.pzb" and what
// its cards name. Nothing is written anywhere else. All throw StoreError with a German sentence, for packages
// that were made to harm too: paths, links, names that pass for others, more than fits or anybody needs.

// The card file of the package at `paket` where it was unpacked before; empty where it was not.
QString SchonAusgepackt(const QString &paket);

struct Ausgepackt
{
    QString kartei;  // the path of the card file
    QString bericht; // German, many lines: what of the package was left out; mostly empty
};

// Unpacks it, whole or not at all, into a directory that is not there yet, with a number at its end where it
// must be. What `progress` throws ends it.
Ausgepackt Auspacken(const QString &paket, const Progress &progress = {});

} // namespace paukfix
