// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TestPlaces.h"

QString SourceFile(const QString &name)
{
    return QStringLiteral(SOURCE_DIR "/") + name;
}

QString BuildFile(const QString &name)
{
    return QStringLiteral(BUILD_DIR "/") + name;
}

QString ProgramDir()
{
    return BuildFile(QStringLiteral("bin"));
}

QString WorkerPath(const QString &name)
{
    return BuildFile(QStringLiteral("tests/") + name);
}

QString CMakeProgram()
{
    return QStringLiteral(CMAKE);
}
