// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programm.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("paukfix"));
    QApplication::setApplicationVersion(QStringLiteral(PAUKFIX_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("paukfix"));
    // The user interface is German whatever the desktop's language.
    QTranslator german;
    if (german.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&german);

    Programm programm(QApplication::applicationDirPath());
    programm.Starten(QApplication::arguments().mid(1));
    return QApplication::exec();
}
