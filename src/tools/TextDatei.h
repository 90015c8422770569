// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

namespace paukfix {

// Text files as they are exchanged with other programs: 8-bit in Windows-1252, UTF-8 or UTF-16.

// The lines of such a file. A byte-order mark tells UTF-8 and UTF-16; without one, what is valid multi-byte
// UTF-8 is that, and everything else is Windows-1252. A line ends at CR LF, LF or CR, the last one also at
// the end of the file.
class TextZeilen
{
public:
    // Throws StoreError 13 for a file that is no text: one with null characters, or with invalid bytes behind
    // a byte-order mark.
    explicit TextZeilen(const QByteArray &inhalt);

    // False where there is no further line.
    bool Naechste(QString &zeile);

    // How far the lines have been read, in bytes.
    int Gelesen() const { return static_cast<int>(stelle_); }

    int Gesamt() const { return static_cast<int>(bytes_.size()); }

private:
    QByteArray bytes_;
    bool utf8_ = false;
    qsizetype stelle_ = 0;
};

// Collects lines for such a file. It becomes Windows-1252, or UTF-8 with a byte-order mark where a text has
// characters that the code page lacks or where its bytes would be taken for UTF-8. Null characters are left
// out: a file with them is no text.
class TextSchreiber
{
public:
    void Zeile(QString text);
    QByteArray Inhalt();

private:
    void AufUtf8();

    QByteArray bytes_;
    bool utf8_ = false;
};

} // namespace paukfix
