// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programm.h"

#include "Drehbuch.h"
#include "Intro.h"
#include "JetLab.h"
#include "StoreTestSupport.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

#include <memory>

// The whole program in this process: all its real windows, messages and dialogs.
class ProgrammTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> ordner_;
    std::unique_ptr<Programm> programm_;
    QStringList meldungen_;
    QString zuhause_;

    QString Pfad(const QString &name) const { return ordner_->filePath("programm/" + name); }

    static QWidget *Offen(const QString &name)
    {
        for (QWidget *fenster : QApplication::topLevelWidgets()) {
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        }
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

    // Answers the question that is open by its button.
    Drehbuch::Szene Frage(QMessageBox::StandardButton antwort)
    {
        return [this, antwort] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->isActiveWindow() || !box->button(antwort))
                return false;
            meldungen_ << box->text();
            QTest::mouseClick(box->button(antwort), Qt::LeftButton);
            return true;
        };
    }

    void FrueherenAnlegen() const
    {
        JetLab lab(4);
        lab.Add(MakeCard(1, 3, 1));
        QFile datei(Pfad("früher.pzb"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write(lab.Bytes());
    }

    bool DialogWaehlen() const
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog->windowTitle() != "Merkkasten öffnen")
            return false;
        auto *name = dialog->findChild<QLineEdit *>("fileNameEdit");
        name->setText(Pfad("früher.pzb"));
        QTest::keyClick(name, Qt::Key_Return);
        return true;
    }

    static bool LetzteWaehlen()
    {
        QWidget *fenster = Bereit("Datausw");
        if (!fenster)
            return false;
        QTest::keyClick(fenster->focusWidget(), Qt::Key_End);
        QTest::keyClick(fenster->focusWidget(), Qt::Key_Return);
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

    // Opens the editor on the first card from the menu.
    void EditorOeffnen()
    {
        OeffnenMitZweiDateien();
        auto *karten = Offen("LBOX")->findChild<QAction *>("MKarten");
        QVERIFY(karten->isEnabled());
        karten->trigger();
        QTRY_VERIFY(Bereit("PFÄndern"));
        QVERIFY(!Offen("LBOX"));
    }

    static void Tippen(const char *feld, const QString &text)
    {
        auto *box = Offen("PFÄndern")->findChild<QTextEdit *>(QString::fromUtf8(feld));
        box->setFocus();
        QTest::keyClicks(box, text);
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

private slots:

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        meldungen_.clear();
        zuhause_ = QDir::currentPath();
        qputenv("XDG_DATA_HOME", QFile::encodeName(ordner_->filePath("daten")));
        qputenv("SDL_AUDIODRIVER", "dummy");
        QVERIFY(QDir().mkpath(ordner_->filePath("programm")));
        for (const QString &name : QDir(PROGRAM_DIR).entryList({"lbox*.jpg", "ueber.rtf", "*.ico"}))
            QVERIFY(QFile::copy(QDir(PROGRAM_DIR).filePath(name), Pfad(name)));
        Konfig("True");
    }

    void cleanup()
    {
        programm_.reset();
        QDir::setCurrent(zuhause_);
    }

    void WithoutArgumentTheIntroComesBeforeTheMainWindow()
    {
        MachProgramm();
        const Drehbuch buch(
            {Taste("Intro", Qt::Key_Return), [] { return !Offen("Intro") && DialogAbbrechen(); }});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(buch.Fertig());
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
    }

    void ClosingTheIntroEndsTheProgram()
    {
        MachProgramm();
        const Drehbuch buch({[] {
            QWidget *intro = Bereit("Intro");
            return intro && intro->close();
        }});
        QVERIFY(!programm_->Starten({}));
        QVERIFY(!Offen("LBOX"));
    }

    void WithAnArgumentTheFileOpensAtOnce()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        MachProgramm();
        QVERIFY(programm_->Starten(Pfad("a.pzb")));
        QVERIFY(!Offen("Intro"));
        QTRY_COMPARE(Kartei(), "a.pzb");
    }

    void WithAnimationFalseTheMainWindowOpensAtOnce()
    {
        Konfig("False");
        MachProgramm();
        const Drehbuch buch({&DialogAbbrechen});
        QVERIFY(programm_->Starten({}));
        QVERIFY(!Offen("Intro"));
        QVERIFY(Offen("LBOX"));
        QTRY_VERIFY(buch.Fertig());
    }

    void AMissingKonfigIsReportedByIntroAndMainWindow()
    {
        // A user's own directory from which the file was deleted.
        QVERIFY(QDir().mkpath(ordner_->filePath("daten")));
        QVERIFY(QFile::remove(Pfad("konfig.dat")));
        QVERIFY(QDir().rename(ordner_->filePath("programm"), ordner_->filePath("daten/paukfix")));
        MachProgramm();
        const Drehbuch buch({Meldung(), Taste("Intro", Qt::Key_Return), Meldung(), &DialogAbbrechen});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_.size(), 2);
        QVERIFY2(meldungen_[0].startsWith("Fehler bei Form Intro Load: "), qPrintable(meldungen_[0]));
        QVERIFY2(meldungen_[1].startsWith("Fehler in Konfig_Lesen"), qPrintable(meldungen_[1]));
        QVERIFY(!QFile::exists(ordner_->filePath("daten/paukfix/konfig.dat")));
    }

    void MissingPicturesAreReportedAndTheProgramStarts()
    {
        for (const char *nummer : {"06", "11"})
            QVERIFY(QFile::remove(Pfad(QString("lbox%1.jpg").arg(nummer))));
        MachProgramm();
        const Drehbuch buch({Meldung(), Meldung(), Taste("Intro", Qt::Key_Space), &DialogAbbrechen});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_.size(), 2);
        QVERIFY(meldungen_[0].startsWith("Fehler bei Form Intro Load: ") &&
                meldungen_[0].contains("lbox06.jpg"));
        QVERIFY(meldungen_[1].contains("lbox11.jpg"));
    }

    void AnArgumentThatIsNoCardFileLeadsToTheDialog()
    {
        MachProgramm();
        const Drehbuch buch({Meldung(), &DialogAbbrechen});
        QVERIFY(programm_->Starten(Pfad("ueber.rtf")));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_, QStringList{"Bitte nur .pzb Dateien"});
    }

    void AFileThatIsInUseIsRefused()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        TestMeldungen andere;
        const TestUhr uhr;
        CardStore anderer(andere, uhr);
        anderer.KarteiPfad = ordner_->filePath("programm");
        QString name = "a.pzb";
        anderer.OpenCardFile(name);
        QVERIFY(anderer.IsOpen());
        MachProgramm();
        const Drehbuch buch({Meldung(), Meldung()});
        QVERIFY(programm_->Starten(Pfad("a.pzb")));
        QTRY_VERIFY(buch.Fertig());
        QVERIFY2(meldungen_[0].contains("3045"), qPrintable(meldungen_[0]));
        QCOMPARE(meldungen_[1], "Fehler beim Öffnen");
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
    }

    void TheMenuShowsStatisticsAndAboutBox()
    {
        OeffnenMitZweiDateien();
        QString anzahl, ueber;
        const Drehbuch buch({[&] {
                                 const QWidget *fenster = Bereit("Statistik");
                                 if (!fenster)
                                     return false;
                                 anzahl = fenster->findChild<QLineEdit *>("AktAnz(0)")->text();
                                 return true;
                             },
                             Taste("Statistik", Qt::Key_Return),
                             [&] {
                                 const QWidget *fenster = Bereit("über");
                                 if (!fenster)
                                     return false;
                                 ueber = fenster->findChild<QTextEdit *>("RichTextBox1")->toPlainText();
                                 return true;
                             },
                             Taste("über", Qt::Key_Return)});
        for (const char *name : {"MStatistik", "Müber"})
            Waehlen(name);
        QVERIFY(buch.Fertig());
        QCOMPARE(anzahl, "2");
        QVERIFY(ueber.startsWith("Paukfix"));
        QTRY_VERIFY(Bereit("LBOX"));
    }

    void EveryFileToolOpensFromTheMenu()
    {
        OeffnenMitZweiDateien();
        for (const auto &[eintrag, name] : {std::pair{"Manzeigen", "Uebersicht"},
                                            {"MAscii_Export", "AExport"},
                                            {"MAscii_Import", "AImport"},
                                            {"MThema_ausfiltern", "Themaausfiltern"},
                                            {"MKartei_anhängen", "Karteianhängen"},
                                            {"MKartei_spiegeln", "Karteispiegeln"},
                                            {"MAlleNeu", "AlleNull"},
                                            {"MErledigtNeu", "ErlNull"}}) {
            const Drehbuch buch({Taste(QString::fromUtf8(name), Qt::Key_Escape)});
            Waehlen(eintrag);
            QVERIFY(buch.Fertig());
            QVERIFY(!Offen(QString::fromUtf8(name)));
        }
        QCOMPARE(Kartei(), "a.pzb");
    }

    void AFileThatAToolMadeIsTheOpenOne()
    {
        OeffnenMitZweiDateien();
        const QString neu = ordner_->filePath("neu.pzb");
        QString beiDerMeldung;
        const Drehbuch buch({Schreiben("Karteispiegeln", neu), Taste("Karteispiegeln", Qt::Key_Return), [&] {
                                 beiDerMeldung = Kartei();
                                 return Meldung()();
                             }});
        Waehlen("MKartei_spiegeln");
        QVERIFY(buch.Fertig());
        QCOMPARE(beiDerMeldung, "neu.pzb");
        QCOMPARE(meldungen_, QStringList{neu + " erfolgreich geschrieben"});
        QCOMPARE(Kartei(), "neu.pzb");
        QVERIFY(QFile::exists(Pfad("a.pzb")));
    }

    void ARowOfTheOverviewOpensTheEditorOnItsCard()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({Taste("Uebersicht", Qt::Key_Down), Taste("Uebersicht", Qt::Key_Return)});
        Waehlen("Manzeigen");
        QVERIFY(buch.Fertig());
        QTRY_VERIFY(Bereit("PFÄndern"));
        QVERIFY(!Offen("Uebersicht") && !Offen("LBOX"));
        QCOMPARE(Offen("PFÄndern")->findChild<QTextEdit *>("MFrage")->toPlainText(), "Frage 2");
        Offen("PFÄndern")->close();
        QTRY_VERIFY(Bereit("LBOX"));
    }

    void TheOverviewNeedsAnOpenFile()
    {
        Konfig("False");
        MachProgramm();
        const Drehbuch anfang({&DialogAbbrechen});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(anfang.Fertig());
        const Drehbuch buch({Meldung()});
        Waehlen("Manzeigen");
        QVERIFY(buch.Fertig());
        QCOMPARE(meldungen_, QStringList{"Bitte zuerst eine Datei öffnen"});
        QVERIFY(!Offen("Uebersicht"));
    }

    void TheCardFileIsChangedByKeyboardAlone()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({Taste("Datausw", Qt::Key_Down), Taste("Datausw", Qt::Key_Return)});
        QTest::keyClick(Offen("LBOX"), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(buch.Fertig());
        QTRY_COMPARE(Kartei(), "b.pzb");
    }

    void TheEditorStandsInForTheBoxAndAddsACardToIt()
    {
        EditorOeffnen();
        QCOMPARE(Offen("PFÄndern")->findChild<QLineEdit *>("MaskFrageNr")->text(), "1");
        QTest::mouseClick(Offen("PFÄndern")->findChild<QWidget *>("CEOF"), Qt::LeftButton);
        Tippen("MFrage", "neu");
        Tippen("Antwort(0)", "ja");
        QTest::keyClick(Offen("PFÄndern"), Qt::Key_I, Qt::ControlModifier);
        QTest::mouseClick(Offen("PFÄndern")->findChild<QWidget *>("Cback"), Qt::LeftButton);
        QTRY_VERIFY(Bereit("LBOX"));
        QVERIFY(!Offen("PFÄndern"));
        const auto *fach = Offen("LBOX")->findChild<QWidget *>("Image0(0)");
        QVERIFY2(fach->accessibleName().contains("Neu: 3 von"), qPrintable(fach->accessibleName()));
        programm_.reset();
        QCOMPARE(ReadCards(Pfad("a.pzb")).at(2).Frage_Klartext, "neu");
    }

    void TheQuerySendsItsCardToTheEditor()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({[] {
            QWidget *abfrage = Bereit("PFUse");
            if (!abfrage)
                return false;
            QTest::mouseClick(abfrage->findChild<QWidget *>("Command1"), Qt::LeftButton);
            return true;
        }});
        QTest::keyClick(Offen("LBOX"), Qt::Key_N);
        QVERIFY(buch.Fertig());
        QTRY_VERIFY(Bereit("PFÄndern"));
        QVERIFY(!Offen("LBOX") && !Offen("PFUse"));
        QCOMPARE(Offen("PFÄndern")->findChild<QLineEdit *>("MaskFrageNr")->text(), "1");
        Tippen("MFrage", "anders ");
        Offen("PFÄndern")->close();
        QTRY_VERIFY(Bereit("LBOX"));
        programm_.reset();
        QVERIFY(ReadCards(Pfad("a.pzb")).at(0).Frage_Klartext.startsWith("anders "));
    }

    void UnsavedWorkIsSeenToBeforeTheProgramEnds()
    {
        EditorOeffnen();
        Tippen("MFrage", "halb ");
        auto *antwort = Offen("PFÄndern")->findChild<QTextEdit *>("Antwort(0)");
        antwort->selectAll();
        QTest::keyClick(antwort, Qt::Key_Delete);
        const Drehbuch bleiben({Meldung(), Meldung()}); // no answer; discard? no
        QVERIFY(!Offen("PFÄndern")->close());
        QVERIFY(bleiben.Fertig());
        QCOMPARE(meldungen_.at(0), "Keine Antwort eingegeben");
        QVERIFY(meldungen_.at(1).contains("verwerfen"));
        QVERIFY(Offen("PFÄndern") && !Offen("LBOX"));
        Tippen("Antwort(0)", "ja");
        QApplication::closeAllWindows();
        QVERIFY(!Offen("PFÄndern") && !Offen("LBOX"));
        programm_.reset();
        QVERIFY(ReadCards(Pfad("a.pzb")).at(0).Frage_Klartext.startsWith("halb "));
    }

    void TheAutomaticModeDoesNotAskWhileCardsAreEdited()
    {
        OeffnenMitZweiDateien();
        auto *automatik = Offen("LBOX")->findChild<QAction *>("MAutoschalter");
        automatik->trigger();
        QVERIFY(automatik->isChecked());
        Offen("LBOX")->findChild<QAction *>("MKarten")->trigger();
        QVERIFY(!automatik->isChecked());
        Offen("PFÄndern")->close();
    }

    void TheEditorOpensAgainWithItsSizeAndTheSearchTerm()
    {
        EditorOeffnen();
        Offen("PFÄndern")->resize(1100, 800);
        const Drehbuch suche({[] {
                                  QWidget *suchen = Bereit("Suchen");
                                  if (!suchen)
                                      return false;
                                  QTest::keyClicks(suchen->findChild<QLineEdit *>("suchtext"), "xyz");
                                  QTest::keyClick(suchen, Qt::Key_Escape);
                                  return true;
                              },
                              [] {
                                  QWidget *suchen = Bereit("Suchen");
                                  if (!suchen || suchen->findChild<QLineEdit *>("suchtext")->text() != "xyz")
                                      return false;
                                  QTest::keyClick(suchen, Qt::Key_Escape);
                                  return true;
                              }});
        QTest::keyClick(Offen("PFÄndern"), Qt::Key_F3);
        Offen("PFÄndern")->close();
        QTRY_VERIFY(Bereit("LBOX"));
        Offen("LBOX")->findChild<QAction *>("MKarten")->trigger();
        QTRY_VERIFY(Bereit("PFÄndern"));
        QCOMPARE(Offen("PFÄndern")->size(), QSize(1100, 800));
        QTest::keyClick(Offen("PFÄndern"), Qt::Key_F3);
        QVERIFY(suche.Fertig());
        Offen("PFÄndern")->close();
    }

    void CancellingTheChooserKeepsTheFile()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({Taste("Datausw", Qt::Key_Escape)});
        QTest::keyClick(Offen("LBOX"), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(buch.Fertig());
        QCOMPARE(Kartei(), "a.pzb");
    }

    void FileOfTheFormerEngineIsConvertedAfterYesOnEveryRoad_data()
    {
        QTest::addColumn<QString>("weg");
        for (const char *weg : {"command line", "dialog", "recent file", "file chooser"})
            QTest::newRow(weg) << QString(weg);
    }

    void FileOfTheFormerEngineIsConvertedAfterYesOnEveryRoad()
    {
        QFETCH(const QString, weg);
        FrueherenAnlegen();
        if (weg == "command line") {
            MachProgramm();
            const Drehbuch buch({Frage(QMessageBox::Yes)});
            QVERIFY(programm_->Starten(Pfad("früher.pzb")));
            QTRY_VERIFY(buch.Fertig());
        } else {
            if (weg == "recent file")
                Konfig("True", Pfad("früher.pzb"));
            OeffnenMitZweiDateien();
            const Drehbuch buch({weg == "dialog"         ? Drehbuch::Szene([this] { return DialogWaehlen(); })
                                 : weg == "file chooser" ? Drehbuch::Szene(&LetzteWaehlen)
                                                         : Drehbuch::Szene([] { return true; }),
                                 Frage(QMessageBox::Yes)});
            if (weg == "file chooser")
                QTest::keyClick(Offen("LBOX"), Qt::Key_L, Qt::ControlModifier);
            else
                Offen("LBOX")->findChild<QAction *>(weg == "dialog" ? "Möffnen" : "MDat(1)")->trigger();
            QTRY_VERIFY(buch.Fertig());
        }
        QTRY_COMPARE(Kartei(), "früher.pzb");
        QCOMPARE(meldungen_.size(), 1);
        QVERIFY(meldungen_[0].contains("„früher.pzb.altes-Format“"));
        programm_.reset();
        QCOMPARE(ReadCards(Pfad("früher.pzb")), QList{MakeCard(1, 3, 1)});
        QVERIFY(QFile::exists(Pfad("früher.pzb.altes-Format")));
    }

    void FileOfTheFormerEngineStaysAfterNo()
    {
        FrueherenAnlegen();
        MachProgramm();
        const Drehbuch buch({Frage(QMessageBox::No), Meldung(), Meldung()});
        QVERIFY(programm_->Starten(Pfad("früher.pzb")));
        QTRY_VERIFY(buch.Fertig());
        QVERIFY2(meldungen_.value(1).endsWith("wurde nicht umgewandelt. Fcode: 3343"),
                 qPrintable(meldungen_[1]));
        QCOMPARE(meldungen_.value(2), "Fehler beim Öffnen");
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
        QVERIFY(!QFile::exists(Pfad("früher.pzb.altes-Format")));
    }
};

QTEST_MAIN(ProgrammTest)
#include "ProgrammTest.moc"
