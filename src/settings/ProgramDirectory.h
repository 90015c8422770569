// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

namespace paukfix {

// The directory "Paukfix" in the user's documents, as the desktop calls them ("~/Dokumente").
QString OwnDirectory();
// Where earlier versions kept the user's files: "~/.local/share/paukfix" where nothing else is set.
QString FormerOwnDirectory();

// Whether this user may write to a file or directory. What nobody may write to, the administrator may not
// either.
bool MayWrite(const QString &path);

// Where the files of the program can lie.
struct ProgramPlaces
{
    QString running;   // where the running program lies
    QString installed; // the shipped files of an installed program, with the sample boxes in "beispiele"
    QString own;       // the user's directory
    QString former;    // the user's directory of earlier versions
};

struct ProgramDirectory
{
    QString path;              // holds "konfig.dat" and the first card files; without a separator at its end
    QStringList shipped;       // where shipped files lie that it lacks, in the order of the search
    QString message;           // what the user has to be told; empty mostly
    bool keepsSettings = true; // false: nothing can be written in `path`
};

// `running`, if it holds a konfig.dat and can be written to (a portable copy, the build tree), else `own`.
// At the first start `own` gets konfig.dat and the sample boxes, never over what lies there already; what is
// deleted in it later stays deleted, and a fill that was killed is finished by the next start. What `former`
// holds is moved to `own` first, and `former` becomes a link to it; where that cannot be done, `former`
// stays the user's directory, and nothing is moved while somebody has a card file of it open. Where `former`
// is `installed` as well, only what is the user's is moved and the rest stays. Where no directory can be
// written to, the shipped files are read and the message says so.
ProgramDirectory FindProgramDirectory(const ProgramPlaces &places);

// `file` as it is called now where it lay in the program directory `directory` before that came to another
// place (a stick that another system mounts elsewhere): its old directory is gone, was `directory` by name or
// one in it, and what followed stands in `directory`. `file` itself in all other cases.
QString MovedAlong(const QString &file, const QString &directory);

} // namespace paukfix
