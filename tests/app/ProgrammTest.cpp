// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Intro.h"
#include "JetLab.h"
#include "KarteiOeffner.h"
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTextEdit>

using namespace paukfix;

// Starting, opening and ending.
class ProgrammTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    // Answers the question that is open by its button.
    Drehbuch::Szene Frage(QMessageBox::StandardButton antwort)
    {
        return Drehbuch::In<QMessageBox>([this, antwort](QMessageBox &box) {
            meldungen_ << box.text();
            Hand::Klick(box.button(antwort));
        });
    }

    void FrueherenAnlegen() const
    {
        JetLab lab(4);
        lab.Add(MakeCard(1, 3, 1));
        QFile datei(Pfad("früher.pzb"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write(lab.Bytes());
    }

    Drehbuch::Szene DialogWaehlen() const
    {
        return ImDialog([this](QFileDialog &dialog) {
            Hand(dialog).Ersetze("fileNameEdit", Pfad("früher.pzb"));
            Hand(dialog).Taste(Qt::Key_Return);
        });
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void WithoutArgumentTheIntroComesBeforeTheMainWindow()
    {
        MachProgramm();
        const Drehbuch buch(
            {Taste("Intro", Qt::Key_Return), [] { return !Hand::Offen("Intro"); }, DialogAbbrechen()});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(buch.Fertig());
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
    }

    void ClosingTheIntroEndsTheProgram()
    {
        MachProgramm();
        const Drehbuch buch({Drehbuch::In("Intro", [](QWidget &intro) { intro.close(); })});
        QVERIFY(!programm_->Starten({}));
        QVERIFY(!Hand::Offen("LBOX"));
    }

    void WithAnArgumentTheFileOpensAtOnce()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QVERIFY(!Hand::Offen("Intro"));
        QTRY_COMPARE(Kartei(), "a.pzb");
    }

    void WeiterOpensTheFileThatWasUsedLastWithoutTheIntro()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Konfig("True", Pfad("a.pzb"));
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", "--weiter"})));
        QVERIFY(!Hand::Offen("Intro"));
        QTRY_COMPARE(Kartei(), "a.pzb");
    }

    void WeiterAsksForAFileWhereNoneWasUsed()
    {
        MachProgramm();
        const Drehbuch buch({DialogAbbrechen()});
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", "--weiter"})));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(Kartei(), "Keine Kartei geöffnet");
        QCOMPARE(meldungen_, QStringList());
    }

    void WithAnimationFalseTheMainWindowOpensAtOnce()
    {
        Konfig("False");
        MachProgramm();
        const Drehbuch buch({DialogAbbrechen()});
        QVERIFY(programm_->Starten({}));
        QVERIFY(!Hand::Offen("Intro"));
        QVERIFY(Hand::Offen("LBOX"));
        QTRY_VERIFY(buch.Fertig());
    }

    void AMissingKonfigIsReportedByIntroAndMainWindow()
    {
        // A user's own directory from which the file was deleted.
        const QString eigene = ordner_->filePath("heim/Documents/Paukfix/");
        QVERIFY(QDir().mkpath(eigene));
        QVERIFY(QFile::copy(Pfad("konfig.dat"), eigene + "konfig.new"));
        QVERIFY(QDir().mkpath(ordner_->filePath("share")));
        QVERIFY(QDir().rename(ordner_->filePath("programm"), ordner_->filePath("share/paukfix")));
        MachProgramm();
        const Drehbuch buch({Meldung(), Taste("Intro", Qt::Key_Return), Meldung(), DialogAbbrechen()});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_.size(), 2);
        QVERIFY2(meldungen_[0].startsWith("Fehler bei Form Intro Load: "), qPrintable(meldungen_[0]));
        QVERIFY2(meldungen_[1].startsWith("Fehler in Konfig_Lesen"), qPrintable(meldungen_[1]));
        // It is made again.
        QVERIFY(QFile::exists(eigene + "konfig.dat"));
    }

    // Neither beside the program nor where an installed one would find it.
    void ACopyThatCannotKeepSettingsSaysSo()
    {
        QVERIFY(QFile::remove(Pfad("konfig.dat")));
        const Drehbuch buch({Meldung()});
        MachProgramm();
        QVERIFY(buch.Fertig());
        QCOMPARE(meldungen_.size(), 1);
        QVERIFY2(meldungen_[0].startsWith("Fehler bei Form Intro Load: Die Einstellungen können nicht "
                                          "gespeichert werden: Pfad nicht gefunden: "),
                 qPrintable(meldungen_[0]));
    }

    void MissingPicturesAreReportedAndTheProgramStarts()
    {
        for (const char *nummer : {"06", "11"})
            QVERIFY(QFile::remove(Pfad(QString("lbox%1.jpg").arg(nummer))));
        MachProgramm();
        const Drehbuch buch({Meldung(), Meldung(), Taste("Intro", Qt::Key_Space), DialogAbbrechen()});
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
        const Drehbuch buch({Meldung(), DialogAbbrechen()});
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("ueber.rtf")})));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_, QStringList{"Bitte nur .pzb Dateien"});
    }

    void AFileThatIsInUseIsRefused()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        TestMeldungen andere;
        const TestClock clock;
        CardStore anderer;
        KarteiOeffner oeffner(anderer, andere, clock);
        anderer.KarteiPfad = ordner_->filePath("programm");
        QString name = "a.pzb";
        oeffner.OpenCardFile(name);
        QVERIFY(anderer.IsOpen());
        MachProgramm();
        const Drehbuch buch({Meldung(), Drehbuch::In<QMessageBox>([this](QMessageBox &box) {
                                 meldungen_ << box.text();
                                 Hand(box).Taste(Qt::Key_Escape); // not to be looked at
                             }),
                             Meldung()});
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QTRY_VERIFY(buch.Fertig());
        QVERIFY2(meldungen_[0].contains("3045"), qPrintable(meldungen_[0]));
        QVERIFY2(meldungen_[1].contains("nur zum Ansehen"), qPrintable(meldungen_[1]));
        QCOMPARE(meldungen_[2], "Fehler beim Öffnen");
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
    }

    void TheMenuShowsStatisticsAndAboutBox()
    {
        OeffnenMitZweiDateien();
        QString anzahl, ueber;
        const Drehbuch buch({Lesen("Statistik", "AktAnz(0)", anzahl), Taste("Statistik", Qt::Key_Return),
                             Lesen("über", "RichTextBox1", ueber), Taste("über", Qt::Key_Return)});
        for (const char *name : {"MStatistik", "Müber"})
            Waehlen(name);
        QVERIFY(buch.Fertig());
        QCOMPARE(anzahl, "2");
        QVERIFY(ueber.startsWith("Paukfix"));
        QTRY_VERIFY(Hand::Bereit("LBOX"));
    }

    void CancellingTheChooserKeepsTheFile()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({Taste("Datausw", Qt::Key_Escape)});
        Hand::An("LBOX").Taste(Qt::Key_L, Qt::ControlModifier);
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
            QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("früher.pzb")})));
            QTRY_VERIFY(buch.Fertig());
        } else {
            if (weg == "recent file")
                Konfig("True", Pfad("früher.pzb"));
            OeffnenMitZweiDateien();
            std::deque<Drehbuch::Szene> szenen{Frage(QMessageBox::Yes)};
            if (weg == "dialog")
                szenen.push_front(DialogWaehlen());
            if (weg == "file chooser")
                szenen.insert(szenen.begin(),
                              {Taste("Datausw", Qt::Key_End), Taste("Datausw", Qt::Key_Return)});
            const Drehbuch buch(szenen);
            if (weg == "file chooser")
                Hand::An("LBOX").Taste(Qt::Key_L, Qt::ControlModifier);
            else
                Hand::An("LBOX").Finde<QAction>(weg == "dialog" ? "Möffnen" : "MDat(1)")->trigger();
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
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("früher.pzb")})));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(meldungen_.value(1),
                 "Die Datei „" + Pfad("früher.pzb") +
                     "“ hat noch das alte Dateiformat und wurde nicht umgewandelt. Fcode: 3343");
        QCOMPARE(meldungen_.value(2), "Fehler beim Öffnen");
        QTRY_COMPARE(Kartei(), "Keine Kartei geöffnet");
        QVERIFY(!QFile::exists(Pfad("früher.pzb.altes-Format")));
    }
};

PAUKFIX_TEST(ProgrammTest)
#include "ProgrammTest.moc"
