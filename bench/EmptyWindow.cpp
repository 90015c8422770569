// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The floor of a start: an empty window of the toolkit, German texts installed as the program does.
#include <QApplication>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QTranslator>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QTranslator german;
    if (german.load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&german);
    QMainWindow window;
    window.resize(900, 600);
    window.show();
    return QApplication::exec();
}
