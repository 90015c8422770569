// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Mediendatei.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

QString BlosserName(const QString &name)
{
    return name.mid(std::max(name.lastIndexOf(u'\\'), name.lastIndexOf(u'/')) + 1);
}

QString Mediendatei(const QString &verzeichnis, const QString &name)
{
    constexpr int MaxNamen = 50'000;
    const QString gesucht = BlosserName(name);
    QString genau = QDir::toNativeSeparators(QDir(verzeichnis).filePath(gesucht));
    if (gesucht.isEmpty() || QFileInfo::exists(genau))
        return genau;
    QString gefunden;
    QDirIterator namen(verzeichnis, QDir::Files | QDir::Hidden);
    for (int anzahl = 0; namen.hasNext(); ++anzahl) {
        // Of a part of the names, another one would be taken each time.
        if (anzahl == MaxNamen)
            return genau;
        namen.next();
        const QString kandidat = namen.fileName();
        if (kandidat.compare(gesucht, Qt::CaseInsensitive) == 0 &&
            (gefunden.isEmpty() || kandidat < gefunden))
            gefunden = kandidat;
    }
    return gefunden.isEmpty() ? genau : QDir::toNativeSeparators(QDir(verzeichnis).filePath(gefunden));
}

bool IstMedienname(const QString &name)
{
    constexpr qsizetype Laengster = 250; // characters, on a card
    static const QStringList Endungen{u"bmp"_s, u"dib"_s,  u"jpg"_s, u"jpeg"_s,
                                      u"jpe"_s, u"jfif"_s, u"wav"_s, u"wave"_s};
    const auto sichtbar = [](QChar zeichen) {
        // Marks that turn the direction of writing let one name pass for another.
        return zeichen.category() != QChar::Other_Control && zeichen.category() != QChar::Other_Format &&
               zeichen != QChar::LineSeparator && zeichen != QChar::ParagraphSeparator &&
               zeichen != QChar::ReplacementCharacter;
    };
    return name.size() <= Laengster && !name.startsWith(u'.') && BlosserName(name) == name &&
           std::all_of(name.begin(), name.end(), sichtbar) &&
           Endungen.contains(QFileInfo(name).suffix().toLower());
}

QString NummerierterName(const QString &name, int nummer)
{
    constexpr qsizetype Laengster = 240; // bytes; file systems allow 255, a card 250 characters
    if (nummer < 2)
        return name;
    const QFileInfo info(name);
    const QString ende = u"-%1.%2"_s.arg(QString::number(nummer), info.suffix());
    QString anfang = info.completeBaseName();
    while (anfang.size() > 1 && QFile::encodeName(anfang + ende).size() > Laengster)
        anfang.chop(anfang.back().isLowSurrogate() ? 2 : 1);
    return anfang + ende;
}

} // namespace paukfix
