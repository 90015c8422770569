// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

namespace paukfix {

// What the program was asked for when it was started.
struct Befehlszeile
{
    enum class Art
    {
        Starten,
        Auskunft, // `text` goes to the terminal, and that is all
        Fehler    // the same, as an error
    };

    Art art = Art::Starten;
    QString kartei;      // the path of the card file to open; empty where none was named
    bool weiter = false; // to open the card file that was used last; none is named then
    QStringList weitere; // further files, of which none is opened
    QString text;
};

// `argumente` begins with the program's name. What begins with a "-" is an option, unless it has the name of
// a file that can be opened, or stands behind "--". A file may be named by a "file://" address of this
// machine.
Befehlszeile BefehlszeileLesen(const QStringList &argumente);

} // namespace paukfix
