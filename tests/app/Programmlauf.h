// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

// A virtual display of its own with a window manager, for runs of the whole program in a real window.
class Bildschirm
{
public:
    Bildschirm();
    Bildschirm(const Bildschirm &) = delete;
    Bildschirm &operator=(const Bildschirm &) = delete;
    ~Bildschirm();

    bool Bereit() const { return !name_.isEmpty(); }

    const QString &Name() const { return name_; } // ":7"

    // Keys as xdotool names them, to the window that has the keyboard.
    void Taste(const QString &taste) const;
    void Tippen(const QString &text) const;
    // The title of the window that has the keyboard.
    QString AktivesFenster() const;
    // Waits until that title begins so.
    bool WartenAuf(const QString &titel) const;

private:
    QByteArray Xdotool(const QStringList &words) const;

    QProcess server_;
    QProcess manager_;
    QString name_;
};

// The program with its shipped files in a directory of its own, and settings that nobody else sees.
class Programmlauf
{
public:
    explicit Programmlauf(const Bildschirm &bildschirm);

    QString Pfad(const QString &name) const { return verzeichnis_.filePath(name); }

    // Replaces `alt` by `neu` in konfig.dat.
    void Konfig(const QByteArray &alt, const QByteArray &neu) const;
    void Starten(const QStringList &argumente);

    bool Laeuft() const { return prozess_.state() == QProcess::Running; }

    // Waits until the program has the lock of this card file, and so has it open.
    bool WartenAufSperre(const QString &kartei) const;
    void Toeten();
    // Waits for the end that the user asked for; the exit code, or -1.
    int Ende();

private:
    QTemporaryDir verzeichnis_;
    QProcess prozess_;
};
