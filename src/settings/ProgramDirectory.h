// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

// The program's directory under the user's data: "~/.local/share/paukfix" where nothing else is set.
QString UserDataDirectory();

// The directory that holds "konfig.dat" and the shipped files, without a separator at its end: `running`,
// where the running program lies, if it holds a konfig.dat that can be rewritten (a portable copy, the build
// tree), else `user`. That one is filled with the files of `installed` once, when it is not there or empty;
// what is deleted in it later stays deleted. A kill while it is filled leaves it unfilled. Throws StoreError
// where it cannot be filled.
QString ProgramDirectory(const QString &running, const QString &installed, const QString &user);
