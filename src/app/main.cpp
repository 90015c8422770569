// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Endsignale.h"
#include "MeldungenFenster.h"
#include "Programm.h"

#include <QApplication>
#include <QSettings>

#include <fontconfig/fontconfig.h>
#include <thread>

int main(int argc, char *argv[])
{
    Endsignale signale;
    // The machine's fonts are read while the toolkit starts, not after it: a fifth of the whole start.
    const std::jthread fonts([] { FcInit(); });
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("paukfix"));
    QApplication::setApplicationVersion(QStringLiteral(PAUKFIX_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("paukfix"));
    DeutscheTexte();
    // The toolkit's dialogs would keep settings of their own; there is nothing behind this path.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

    signale.Melden();
    Programm programm(QApplication::applicationDirPath());
    return programm.Starten(QApplication::arguments().value(1)) ? QApplication::exec() : 0;
}
