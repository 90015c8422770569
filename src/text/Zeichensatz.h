// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace paukfix {

// An encoding of text files, by the name that other programs know it by too ("UTF-8", "windows-1251"); none
// stands for the one that the file itself makes likely.
using Zeichensatz = QByteArray;

inline constexpr char Utf8[] = "UTF-8";
inline constexpr char Windows1252[] = "windows-1252";
inline constexpr char Utf16Le[] = "UTF-16LE";
inline constexpr char Utf16Be[] = "UTF-16BE";

struct Zeichensatzname
{
    Zeichensatz zeichensatz;
    QString name; // for learners: "Windows-1251 (Kyrillisch)"
};

// Those that are offered, the usual ones first.
const std::vector<Zeichensatzname> &Zeichensaetze();

// What learners know it as.
QString NameVon(const Zeichensatz &zeichensatz);

// Bytes of a text that its encoding does not have.
struct Unpassendes
{
    int stellen = 0;
    std::vector<int> zeilen; // where they are, each once, from 1; at most 100
    QByteArray erste;        // those of the first place
};

// The bytes as UTF-8. What does not fit is told in `unpassend`, and becomes U+FFFD. Throws StoreError 13
// where nobody knows the encoding.
QByteArray NachUtf8(QByteArrayView bytes, const Zeichensatz &zeichensatz, Unpassendes &unpassend);

// The same for what should be UTF-8: a byte that does not fit can also be taken for Windows-1252, as where
// two lists were put together.
QByteArray BereinigtesUtf8(QByteArrayView bytes, bool fremdeAls1252, Unpassendes &unpassend);

// How many characters of several bytes, and how many places that are none, the bytes have as UTF-8.
struct Utf8Probe
{
    qsizetype zeichen = 0;
    qsizetype fehler = 0;
};

Utf8Probe AlsUtf8(QByteArrayView bytes);

} // namespace paukfix
