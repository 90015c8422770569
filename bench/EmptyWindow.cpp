// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// The floor of a start: an empty window with one label and one menu bar, German texts installed as the
// program does.
#include <QApplication>
#include <QLabel>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QTranslator>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QTranslator german;
    if (german.load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&german);
    QMainWindow window;
    window.menuBar()->addMenu(u"Datei"_s);
    window.setCentralWidget(new QLabel(u"Frage"_s));
    window.resize(900, 600);
    window.show();
    return QApplication::exec();
}
