// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TestPlaces.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace paukfix {

enum class Vorspann
{
    Ja,
    Nein
}; // intro and animations

// Puts a portable copy of the built program into a directory, with the shipped files that it needs.
inline void ProgrammKopieren(const QString &ordner, Vorspann vorspann)
{
    const QDir von(ProgramDir());
    for (const QString &name : von.entryList({"paukfix", "lbox*.jpg", "ueber.rtf", "*.ico", "Applause.wav"}))
        QVERIFY(QFile::copy(von.filePath(name), QDir(ordner).filePath(name)));
    QVERIFY(QFile::link(von.filePath("handbuch"), QDir(ordner).filePath("handbuch")));
    QFile geliefert(SourceFile("assets/konfig.dat"));
    QFile konfig(QDir(ordner).filePath("konfig.dat"));
    QVERIFY(geliefert.open(QIODevice::ReadOnly) && konfig.open(QIODevice::WriteOnly));
    QByteArray zeilen = geliefert.readAll();
    if (vorspann == Vorspann::Nein)
        zeilen.replace("Animation=True", "Animation=False");
    QVERIFY(konfig.write(zeilen) == zeilen.size());
}

} // namespace paukfix
