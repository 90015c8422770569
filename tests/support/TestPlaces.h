// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// Where the tree, its build and what was built lie. Only one source knows it, so that a compiler cache serves
// all others in every checkout.
QString SourceFile(const QString &name); // below the tree
QString BuildFile(const QString &name);  // below the build
QString ProgramDir();                    // of the built program and its shipped files
QString WorkerPath(const QString &name); // a second program of the tests
QString CMakeProgram();

} // namespace paukfix
