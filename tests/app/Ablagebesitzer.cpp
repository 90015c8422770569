// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>

// Another program that owns the clipboard: "ablagebesitzer ART DATEI...". Says "bereit" when it does and
// "verloren" when it does no more.
int main(int argc, char **argv)
{
    const QGuiApplication programm(argc, argv);
    const auto sagen = [](const char *wort) {
        std::puts(wort);
        std::fflush(stdout);
    };
    auto *mime = new QMimeData; // the clipboard's
    const QStringList worte = QGuiApplication::arguments();
    for (qsizetype i = 1; i + 1 < worte.size(); i += 2) {
        QFile datei(worte[i + 1]);
        if (!datei.open(QIODevice::ReadOnly))
            return 1;
        mime->setData(worte[i], datei.readAll());
    }
    QClipboard &ablage = *QGuiApplication::clipboard();
    ablage.setMimeData(mime);
    QObject::connect(&ablage, &QClipboard::dataChanged, &ablage, [&] {
        if (!ablage.ownsClipboard())
            sagen("verloren");
    });
    sagen("bereit");
    return QGuiApplication::exec();
}
