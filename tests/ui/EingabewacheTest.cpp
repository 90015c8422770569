// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Eingabewache.h"

#include "TestProgram.h"

#include <QKeyEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

using namespace paukfix;

// Notes what comes to it: "+" and "-" for a key pressed and released.
class Empfaenger final : public QWidget
{
public:
    QString gekommen;

protected:
    void keyPressEvent(QKeyEvent *event) override { gekommen += u'+' + event->text(); }

    void keyReleaseEvent(QKeyEvent *event) override { gekommen += u'-' + event->text(); }
};

// What is typed while a window is on its way is kept, in its order, for whoever it belongs to.
class EingabewacheTest : public QObject
{
    Q_OBJECT

private:
    Empfaenger box_, ziel_;

    void Taste(QEvent::Type art, Qt::Key taste)
    {
        QKeyEvent event(art, taste, Qt::NoModifier, QString(QChar(taste)));
        QCoreApplication::sendEvent(box_.windowHandle(), &event);
    }

private slots:

    void init()
    {
        for (Empfaenger *fenster : {&box_, &ziel_}) {
            fenster->gekommen.clear();
            fenster->show();
        }
        box_.setFocus();
    }

    void WhatIsTypedGoesToTheWindowThatComes()
    {
        Eingabewache wache(box_);
        wache.Halten();
        for (const Qt::Key taste : {Qt::Key_A, Qt::Key_B}) {
            Taste(QEvent::KeyPress, taste);
            Taste(QEvent::KeyRelease, taste);
        }
        QCOMPARE(box_.gekommen, "");
        wache.Weitergeben(ziel_);
        QTRY_COMPARE(ziel_.gekommen, "+A-A+B-B");
        QCOMPARE(box_.gekommen, "");
    }

    // Who has seen the press waits for the release.
    void AKeyPressedBeforeIsReleasedWhereItWasPressed()
    {
        Eingabewache wache(box_);
        Taste(QEvent::KeyPress, Qt::Key_A);
        wache.Halten();
        Taste(QEvent::KeyRelease, Qt::Key_A);
        QCOMPARE(box_.gekommen, "+A-A");
    }
};

PAUKFIX_TEST(EingabewacheTest)
#include "EingabewacheTest.moc"
