// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>
#include <QString>

namespace paukfix {

// The keys and buttons of one window.
struct Tastengruppe
{
    struct Zeile
    {
        QString tasten; // each key in brackets: "[Strg]+[Z] · [Strg]+[Y]"
        QString was;
    };

    QString fenster; // the object name of the window; empty for those of every window
    QString titel;
    QList<Zeile> zeilen;
};

// The keys and buttons of the program's windows, to be kept true with them. The handbook's page of all keys
// is made of it.
QList<Tastengruppe> AlleTasten();

} // namespace paukfix
