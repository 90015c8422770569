// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "Meldungen.h"

#include <QEventLoop>
#include <QImage>
#include <QTimer>
#include <QWidget>

class QPushButton;

namespace paukfix {

class Bildpunkte;

// The window that the program starts with: a story in seven pictures, until the user presses "los geht's".
// They run through without a pause; while the window waits, they can be looked at one by one.
class Intro final : public QWidget
{
public:
    enum class Ausgang
    {
        Hauptfenster, // the main window comes next
        Programmende  // the window was closed instead
    };

    Intro(const AppConfig &konfig, Meldungen &meldungen);

    // Plays the intro and returns when it has ended. It is not shown where the animation is switched off or
    // the program was started with a command line.
    Ausgang Form_Load(const QString &befehlszeile);

    bool AnimationOn() const { return animationOn_; }

    // The number of the picture that the story has come to, 12 behind the last one; from 13 on "los geht's"
    // has been pressed.
    qint16 IntroStep() const { return introStep_; }

    // Milliseconds, as the timer counts them; stops at 32,767.
    qint16 IntroElapsed() const { return introElapsed_; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void Aufbauen();
    void Abspielen();
    void NummerZeigen(int nummer);
    void BildZeigen(const QString &pfad);
    void Blaettern(int nummer);
    void Command1_Click();
    void Timer_Intro_Timer();

    const AppConfig &konfig_;
    Meldungen &meldungen_;
    bool animationOn_ = true;
    bool geschlossen_ = false;
    qint16 introStep_ = 0;
    int gezeigt_ = 0; // the number of the picture that was asked for last
    qint16 introElapsed_ = 0;
    QImage bild_; // the window's background, read at the size that it is shown in
    QString pfad_;
    QEventLoop warten_;
    QTimer *Timer_Intro_ = nullptr;
    QPushButton *Command1_ = nullptr;
    Bildpunkte *punkte_ = nullptr;
};

} // namespace paukfix
