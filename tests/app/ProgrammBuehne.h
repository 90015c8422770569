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

#include <functional>
#include <memory>

namespace paukfix {

// An entry of the box's menu and the window that it opens.
struct Menuefenster
{
    const char *eintrag, *fenster;
};

inline const QList<Menuefenster> Dateiwerkzeuge{{"Manzeigen", "Uebersicht"},
                                                {"MAscii_Export", "AExport"},
                                                {"MAscii_Import", "AImport"},
                                                {"MThema_ausfiltern", "Themaausfiltern"},
                                                {"MKartei_anhängen", "Karteianhängen"},
                                                {"MKartei_spiegeln", "Karteispiegeln"},
                                                {"MKartei_packen", "Karteipacken"},
                                                {"MFremdeKartei", "FremdeKartei"},
                                                {"MKartei_ausgeben", "Karteiausgeben"},
                                                {"MAlleNeu", "AlleNull"},
                                                {"MErledigtNeu", "ErlNull"}};
inline const QList<Menuefenster> Nachschau{
    {"MStatistik", "Statistik"}, {"MVerlauf", "Verlauf"}, {"MSicherungen", "Sicherungen"}, {"Müber", "über"}};

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
        QVERIFY(QFile::link(QDir(ProgramDir()).filePath("handbuch"), Pfad("handbuch")));
        Konfig("True");
    }

    void Abraeumen()
    {
        programm_.reset();
        QDir::setCurrent(zuhause_);
    }

    QString Pfad(const QString &name) const { return ordner_->filePath("programm/" + name); }

    static Drehbuch::Szene Taste(const QString &name, Qt::Key taste, Qt::KeyboardModifiers dazu = {})
    {
        return Drehbuch::In(name, [=](QWidget &fenster) { Hand(fenster).Taste(taste, dazu); });
    }

    // Types into the field that has the keyboard in this window.
    static Drehbuch::Szene Schreiben(const QString &name, const QString &text)
    {
        return Drehbuch::In(name, [=](QWidget &fenster) { Hand(fenster).Tippe(text); });
    }

    // Reads what a control of this window shows.
    static Drehbuch::Szene Lesen(const QString &name, const QString &was, QString &text)
    {
        return Drehbuch::In(name, [=, &text](QWidget &fenster) { text = Hand(fenster).Text(was); });
    }

    // Reads the next message and closes it.
    Drehbuch::Szene Meldung()
    {
        return Drehbuch::In<QMessageBox>([this](QMessageBox &box) {
            meldungen_ << box.text();
            Hand(box).Taste(Qt::Key_Return);
        });
    }

    // Does this in the dialog that asks for a card file.
    static Drehbuch::Szene ImDialog(const std::function<void(QFileDialog &)> &tun)
    {
        return Drehbuch::In<QFileDialog>([tun](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), "Merkkasten öffnen");
            tun(dialog);
        });
    }

    static Drehbuch::Szene DialogAbbrechen()
    {
        return ImDialog([](QFileDialog &dialog) { dialog.reject(); });
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
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QTRY_COMPARE(Kartei(), "a.pzb");
        QTRY_VERIFY(Hand::Bereit("LBOX"));
    }

    static void Waehlen(const QString &eintrag)
    {
        auto *aktion = Hand::An("LBOX").Finde<QAction>(eintrag);
        QVERIFY(aktion->isEnabled());
        aktion->trigger();
    }

    static QString Kartei() { return Hand::Offen("LBOX") ? Hand::An("LBOX").Text("LKartei") : QString(); }

    std::unique_ptr<QTemporaryDir> ordner_;
    std::unique_ptr<Programm> programm_;
    QStringList meldungen_;
    QString zuhause_;
};

} // namespace paukfix
