// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TestPlaces.h"

namespace paukfix {

using namespace Qt::StringLiterals;

QString SourceFile(const QString &name)
{
    return u"" SOURCE_DIR u"/"_s + name;
}

QString BuildFile(const QString &name)
{
    return u"" BUILD_DIR u"/"_s + name;
}

QString ProgramDir()
{
    return BuildFile(u"bin"_s);
}

QString WorkerPath(const QString &name)
{
    return BuildFile(u"tests/"_s + name);
}

QString CMakeProgram()
{
    return u"" CMAKE u""_s;
}

} // namespace paukfix
