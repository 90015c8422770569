// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

namespace paukfix {

// The checksums of a card file's pages, in the format of "The Checksum VFS Shim"
// (https://www.sqlite.org/cksumvfs.html): the last 8 bytes of every page, which the engine leaves alone, are
// the sum of the others. One changed bit changes the sum for certain. A page of zeros has the sum zero.
//
// The engine knows nothing of them: between it and the disk stands a layer that writes the sum into each page
// on its way out and compares it on its way in. A page whose sum does not fit is not given to the engine,
// which reports SQLITE_IOERR_DATA. That holds too for the pages that a rollback journal keeps: they bear the
// sum that they had in the file, so that what is rolled back was compared like anything else. Files whose
// header does not name sums pass as they are.

inline constexpr int PageSumSize = 8; // bytes

// Behind a "?" in the URI under which a database is opened: its pages, and those of its journal, pass as they
// are, whatever their sums say.
inline constexpr const char *SumsIgnored = "sums=0";

// Do the first 100 bytes of a database say that its pages have sums? It bears our mark and a version of the
// format that has them, and keeps 8 bytes free on each page.
bool NamesPageSums(Bytes header);

// Is the sum at the end of this page the one of its other bytes? The page's size is a multiple of 8.
bool PageSumFits(Bytes page);

// Puts the layer before the disk that the engine uses at that moment, for the rest of the process. To be
// called before the first database is opened; again it does nothing.
void UsePageSums();

} // namespace paukfix
