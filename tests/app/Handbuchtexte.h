// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TestPlaces.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QTest>

namespace paukfix {

inline QString Gelesen(const QString &pfad)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly))
        qFatal("no %s", qPrintable(pfad));
    return QString::fromUtf8(datei.readAll());
}

// What the handbook's texts name, each in the way that it is written: **a menu's entry** or **a caption**, `a
// key`, „a text of the program“ (with … where it changes), [a link](page.html#place), ![a picture](name.png).
struct Handbuchtext
{
    static QStringList Dateien()
    {
        return QDir(SourceFile("docs/handbuch")).entryList({"*.md"}, QDir::Files);
    }

    explicit Handbuchtext(const QString &datei) : text(Gelesen(SourceFile("docs/handbuch/" + datei))) {}

    QStringList Alle(const char *muster) const
    {
        QStringList gefunden;
        auto treffer = QRegularExpression(muster).globalMatch(text);
        while (treffer.hasNext())
            gefunden << treffer.next().captured(1).simplified();
        return gefunden;
    }

    QStringList Fett() const { return Alle(R"(\*\*([^*]+)\*\*)"); }

    QStringList Tasten() const { return Alle("`([^`]+)`"); }

    QStringList Texte() const { return Alle("„([^“]+)“"); }

    QStringList Verweise() const
    {
        return Alle(R"([^!]\[[^\]]*\]\(([^)]+)\))") + Alle(R"(^\[[^\]]*\]\(([^)]+)\))");
    }

    QStringList Bilder() const { return Alle(R"(!\[[^\]]+\]\(([^)]+)\))"); }

    QString text;
};

// The texts that the program's sources hold: without marks of keys, and with … where something is put in.
inline QSet<QString> Quelltexte()
{
    static const QRegularExpression Stueck(
        R"(u"((?:[^"\\]|\\.)*)\"(?:_s)?(?:\s*u?"((?:[^"\\]|\\.)*)\"(?:_s)?)*)");
    static const QRegularExpression Teil(R"(u?"((?:[^"\\]|\\.)*)\")");
    QSet<QString> texte;
    QDirIterator dateien(SourceFile("src"), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
    while (dateien.hasNext()) {
        auto stuecke = Stueck.globalMatch(Gelesen(dateien.next()));
        while (stuecke.hasNext()) {
            QString ganz;
            auto teile = Teil.globalMatch(stuecke.next().captured());
            while (teile.hasNext())
                ganz += teile.next().captured(1);
            ganz.replace("\\n", " ").replace("\\\"", "\"").remove('&');
            texte << ganz.replace(QRegularExpression("%[0-9]"), "…").simplified();
        }
    }
    return texte;
}

} // namespace paukfix
