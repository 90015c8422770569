// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// Writes the handbook's page of all keys, as Markdown: mktasten FILE
#include "Tastenliste.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace Qt::StringLiterals;
    QFile datei(QString::fromLocal8Bit(argv[argc - 1]));
    if (argc != 2 || !datei.open(QIODevice::WriteOnly)) {
        std::fputs("mktasten FILE\n", stderr);
        return 1;
    }
    QTextStream text(&datei);
    text << u"# Alle Tasten\n\n"
            "Fast alles in Paukfix geht mit der Maus und mit der Tastatur. Diese Seite nennt alle Tasten, "
            "Fenster für "
            "Fenster. Ein Plus heißt: die erste halten und die zweite dazu drücken.\n"_s;
    for (const paukfix::Tastengruppe &gruppe : paukfix::AlleTasten()) {
        const QString name = gruppe.fenster.isEmpty() ? u"ueberall"_s : gruppe.fenster;
        text << u"\n## <a name=\"%1\"></a>%2\n\n| Taste | Was sie tut |\n|---|---|\n"_s.arg(name,
                                                                                            gruppe.titel);
        for (auto [tasten, was] : gruppe.zeilen) {
            // "[Strg]+[Z]" is one key to be looked for: "Strg+Z".
            for (QString *teil : {&tasten, &was})
                teil->replace(u"]+["_s, u"+"_s).replace(u'[', u'`').replace(u']', u'`');
            text << u"| %1 | %2 |\n"_s.arg(tasten, was.replace(u'<', u"&lt;"_s));
        }
    }
    text.flush();
    return datei.error() == QFile::NoError ? 0 : 1;
}
