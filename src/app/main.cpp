// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "MeldungenFenster.h"
#include "Programm.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("paukfix"));
    QApplication::setApplicationVersion(QStringLiteral(PAUKFIX_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("paukfix"));
    DeutscheTexte();

    Programm programm(QApplication::applicationDirPath());
    return programm.Starten(QApplication::arguments().value(1)) ? QApplication::exec() : 0;
}
