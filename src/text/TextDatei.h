// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Zeichensatz.h"

#include <QByteArray>
#include <QString>

namespace paukfix {

// Text files as they are exchanged with other programs.

// What stands in such a file: its bytes as UTF-8 or as Windows-1252, whichever needs no work.
struct Textinhalt
{
    QByteArray bytes;
    qsizetype anfang = 0; // behind a byte-order mark
    bool utf8 = false;
    Zeichensatz zeichensatz; // in which the file was read
    Unpassendes unpassend;
};

// How bytes that are no UTF-8 are read in a file that is UTF-8 otherwise.
enum class Fremdes
{
    AlsZeichenersatz, // U+FFFD
    AlsWindows1252
};

// A byte-order mark tells UTF-8 and UTF-16; without one, what is valid multi-byte UTF-8 is that, and so is
// what has twice as many such characters as bytes that are none; every second byte null is UTF-16; everything
// else is Windows-1252.
Zeichensatz ZeichensatzRaten(const QByteArray &datei);

// The text of a file in that encoding, or in the one that it makes likely. Throws StoreError 13 for a file
// that is no text: one with null characters, or half a character of UTF-16.
Textinhalt TextLesen(const QByteArray &datei, const Zeichensatz &zeichensatz = {},
                     Fremdes fremdes = Fremdes::AlsZeichenersatz);

// A piece of such a text.
QString TextAus(QByteArrayView bytes, bool utf8);

// Collects lines for such a file. It becomes Windows-1252, or UTF-8 with a byte-order mark where that is
// wanted, where a text has characters that the code page lacks or where its bytes would be taken for UTF-8.
// Null characters are left out: a file with them is no text.
class TextSchreiber
{
public:
    explicit TextSchreiber(bool utf8 = false) : utf8_(utf8) {}

    // Ends with CR LF.
    void Zeile(QString text);
    QByteArray Inhalt();

private:
    void AufUtf8();

    QByteArray bytes_;
    bool utf8_ = false;
};

} // namespace paukfix
