// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Einstellungen.h"
#include "Meldungen.h"
#include "StoreError.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace paukfix {

// The user's settings and the file "konfig.dat" in the program directory that keeps them.
class AppConfig : public QObject, public Einstellungen
{
    Q_OBJECT

public:
    explicit AppConfig(Meldungen &meldungen);

    QString ProgrammPfad;       // program directory, without a separator at its end
    QStringList Lieferpfade;    // where shipped files lie that the program directory lacks
    bool NurDieserLauf = false; // settings cannot be written, and the user knows

    // Takes every setting that the file holds; what it lacks, or what cannot be read, keeps its value. Each
    // error is shown ("Fehler in Konfig_Lesen" and its text) and the reading goes on. A file that is gone is
    // then made again from the shipped one. What is no place or size of a window is passed over.
    void ReadConfig();
    // Rewrites one section and reads the file anew: 1 puts the file name `value` on top of the recent files,
    // 2 stores `schrift` (`value` is not used), 3 stores `value`, "True" or "False", as the animation
    // setting; a section that the file does not have is not written. 4 stores `Abfrage` (`value` is not
    // used) and appends its section where there is none. Throws StoreError, and konfig.dat is
    // then as it was; one that is read-only is never replaced.
    void WriteConfig(qint16 section, const QString &value);
    // WriteConfig for a command: shows `kontext` and the error's text. That settings may not be written is
    // said once, and they then hold until the program ends.
    void Sichern(qint16 section, const QString &value, const QString &kontext);
    // The animation setting as the intro reads it: header and key in exactly this letter case, true when
    // there is none. Throws StoreError.
    bool ReadIntroAnimation() const;

    // The recent file of this place in the list, as it is to be opened: it may have moved with the program
    // directory.
    QString LetzteDatei(std::size_t i) const;

    // A file of the program from the first place that has it; in the program directory where none has.
    QString ProgrammDatei(const QString &name) const;

signals:
    // After every change from here: the menu shows the new values.
    void Gelesen();

private:
    QString KonfigPfad(const char *name) const;
    bool Verloren() const;
    QByteArray NeuAnlegen() const;
    // What cannot be written holds in memory alone.
    void NurMerken(qint16 section, const QString &value);

    Meldungen &meldungen_;
};

} // namespace paukfix
