// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Befehlszeile.h"
#include "Endsignale.h"
#include "Hausstil.h"
#include "MeldungenFenster.h"
#include "Programm.h"

#include <QApplication>
#include <QSettings>

#include <cstdio>
#include <fontconfig/fontconfig.h>
#include <thread>

using namespace paukfix;
using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    // The toolkit takes its own options away, but needs a display for that.
    const Befehlszeile auskunft = BefehlszeileLesen([&] {
        QStringList alle;
        for (int i = 0; i < argc; ++i)
            alle << QString::fromLocal8Bit(argv[i]);
        return alle;
    }());
    if (auskunft.art == Befehlszeile::Art::Auskunft)
        return std::fputs(auskunft.text.toLocal8Bit().constData(), stdout) < 0 ? 1 : 0;

    Endsignale signale;
    // The machine's fonts are read while the toolkit starts, not after it: a fifth of the whole start.
    const std::jthread fonts([] { FcInit(); });
    const QApplication application(argc, argv);
    QApplication::setApplicationName(u"paukfix"_s);
    QApplication::setApplicationVersion(u"" PAUKFIX_VERSION u""_s);
    QGuiApplication::setDesktopFileName(u"paukfix"_s);
    // The toolkit's dialogs would keep settings of their own: they find no place for them.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, u"/dev/null"_s);
    DeutscheTexte();
    Hausstil::Einrichten();

    const Befehlszeile befehl = BefehlszeileLesen(QApplication::arguments());
    if (befehl.art == Befehlszeile::Art::Fehler) {
        std::fputs(befehl.text.toLocal8Bit().constData(), stderr);
        return 2;
    }
    signale.Melden();
    Programm programm(QApplication::applicationDirPath());
    return programm.Starten(befehl) ? QApplication::exec() : 0;
}
