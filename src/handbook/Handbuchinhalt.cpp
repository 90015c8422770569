// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchinhalt.h"

#include <QFile>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

QList<Handbuchkapitel> HandbuchinhaltLesen(const QString &ordner)
{
    QFile datei(ordner + u"/index.html"_s);
    if (!datei.open(QIODevice::ReadOnly))
        return {};
    QTextDocument seite;
    seite.setHtml(QString::fromUtf8(datei.readAll()));
    QList<Handbuchkapitel> inhalt{{u"index.html"_s, seite.firstBlock().text()}};
    for (QTextBlock block = seite.begin(); block.isValid(); block = block.next())
        for (auto i = block.begin(); !i.atEnd(); ++i) {
            const QString ziel = i.fragment().charFormat().anchorHref();
            const bool bekannt = std::ranges::any_of(
                inhalt, [&](const Handbuchkapitel &kapitel) { return kapitel.datei == ziel; });
            if (ziel.endsWith(u".html") && !bekannt)
                inhalt.append({ziel, i.fragment().text()});
        }
    return inhalt;
}

} // namespace paukfix
