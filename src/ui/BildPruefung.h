// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>

namespace paukfix {

// Whether all of a picture is in its file. The toolkit's readers do not tell: they give what they could read
// of a file that was cut off, and of a bitmap's missing rows whatever the memory held.

// Sizes in the header that nobody needs may be wrong, and padding behind the last row may be missing.
bool BmpVollstaendig(const QByteArray &datei);

// Bytes behind the end of the picture do not matter.
bool JpegVollstaendig(const QByteArray &datei);

// A BMP file with a header that the toolkit reads: those of 52 and 56 bytes (with masks) and the short one of
// OS/2 get one of 40; every other stays.
QByteArray MitLesbaremKopf(QByteArray datei);

// False for a BMP file with a header of a size that no known kind has.
bool KopfBekannt(const QByteArray &datei);

} // namespace paukfix
