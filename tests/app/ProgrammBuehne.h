// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Drehbuch.h"
#include "Programm.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace paukfix {

// The whole program in this process: all its real windows, messages and dialogs, in a program directory of
// its own.
class ProgrammBuehne : public QObject
{
protected:
    void Aufstellen()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        meldungen_.clear();
        zuhause_ = QDir::currentPath();
        qputenv("HOME", QFile::encodeName(ordner_->filePath("heim")));
        for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            qunsetenv(name);
        qputenv("SDL_AUDIODRIVER", "dummy");
        QVERIFY(QDir().mkpath(ordner_->filePath("programm")));
        for (const QString &name : QDir(ProgramDir()).entryList({"lbox*.jpg", "ueber.rtf", "*.ico"}))
            QVERIFY(QFile::copy(QDir(ProgramDir()).filePath(name), Pfad(name)));
        Konfig("True");
    }

    void Abraeumen()
    {
        programm_.reset();
        QDir::setCurrent(zuhause_);
    }

    QString Pfad(const QString &name) const { return ordner_->filePath("programm/" + name); }

    static QWidget *Offen(const QString &name)
    {
        for (QWidget *fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }

    // The window of this name when it can be used.
    static QWidget *Bereit(const QString &name)
    {
        QWidget *fenster = Offen(name);
        const QWidget *modal = QApplication::activeModalWidget();
        return fenster && (!modal || modal == fenster) && QApplication::activeWindow() == fenster ? fenster
                                                                                                  : nullptr;
    }

    static Drehbuch::Szene Taste(const QString &name, Qt::Key taste, Qt::KeyboardModifiers dazu = {})
    {
        return [=] {
            QWidget *fenster = Bereit(name);
            if (!fenster || !fenster->focusWidget())
                return false;
            QTest::keyClick(fenster->focusWidget(), taste, dazu);
            return true;
        };
    }

    // Reads the next message and closes it.
    Drehbuch::Szene Meldung()
    {
        return [this] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->isActiveWindow())
                return false;
            meldungen_ << box->text();
            QTest::keyClick(box, Qt::Key_Return);
            return true;
        };
    }

    // Cancels the dialog that asks for a card file.
    static bool DialogAbbrechen()
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog->windowTitle() != "Merkkasten öffnen")
            return false;
        dialog->reject();
        return true;
    }

    // `letzte` is a recent file.
    void Konfig(const QByteArray &animation, const QString &letzte = {}) const
    {
        QFile datei(Pfad("konfig.dat"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("[recentfiles]\r\n" + (letzte.isEmpty() ? QByteArray() : letzte.toLatin1() + "\r\n") +
                    "[Font]\r\nFontName=Arial\r\n[Animation]\r\nAnimation=" + animation + "\r\n");
    }

    void MachProgramm() { programm_ = std::make_unique<Programm>(ordner_->filePath("programm")); }

    // The program on "a.pzb", and "b.pzb" beside it.
    void OeffnenMitZweiDateien()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        MakeCardFile(Pfad("b.pzb"), {MakeCard(1, 1, 1)});
        MachProgramm();
        QVERIFY(programm_->Starten(Pfad("a.pzb")));
        QTRY_COMPARE(Kartei(), "a.pzb");
        QTRY_VERIFY(Bereit("LBOX"));
    }

    static void Waehlen(const char *eintrag)
    {
        auto *aktion = Offen("LBOX")->findChild<QAction *>(QString::fromUtf8(eintrag));
        QVERIFY(aktion && aktion->isEnabled());
        aktion->trigger();
    }

    // Types into the field that has the keyboard in this window.
    static Drehbuch::Szene Schreiben(const QString &name, const QString &text)
    {
        return [=] {
            QWidget *fenster = Bereit(name);
            if (!fenster || !fenster->focusWidget())
                return false;
            QTest::keyClicks(fenster->focusWidget(), text);
            return true;
        };
    }

    static QString Kartei()
    {
        const QWidget *lbox = Offen("LBOX");
        const auto *knopf = lbox ? lbox->findChild<QToolButton *>("LKartei") : nullptr;
        return knopf ? knopf->text() : QString();
    }

    std::unique_ptr<QTemporaryDir> ordner_;
    std::unique_ptr<Programm> programm_;
    QStringList meldungen_;
    QString zuhause_;
};

} // namespace paukfix
