// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgrammBuehne.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QLabel>
#include <QLineEdit>
#include <QTextEdit>

using namespace paukfix;

// The windows that the main window opens, and what they change for it.
class ProgrammFensterTest : public ProgrammBuehne
{
    Q_OBJECT

private:
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

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

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

    void FromTheOverviewTheEditorWalksByNumberAndTheBoxGoesOnInItsOwnOrder()
    {
        MakeCardFile(Pfad("a.pzb"),
                     {MakeCard(1, 3, 1), MakeCard(2, 0, 2), MakeCard(3, 1, 1), MakeCard(4, 0, 1)});
        MachProgramm();
        QVERIFY(programm_->Starten(Pfad("a.pzb")));
        QTRY_VERIFY(Bereit("LBOX") && Kartei() == "a.pzb");
        const Drehbuch buch({Taste("Uebersicht", Qt::Key_Down), Taste("Uebersicht", Qt::Key_Return)});
        Waehlen("Manzeigen");
        QVERIFY(buch.Fertig());
        QTRY_VERIFY(Bereit("PFÄndern"));
        const auto nummer = [] { return Offen("PFÄndern")->findChild<QLineEdit *>("MaskFrageNr"); };
        const auto weiter = [](const char *knopf) {
            QTest::mouseClick(Offen("PFÄndern")->findChild<QWidget *>(QString::fromUtf8(knopf)),
                              Qt::LeftButton);
        };
        QCOMPARE(nummer()->text(), "2");
        weiter("CVor");
        QCOMPARE(nummer()->text(), "3");
        nummer()->setFocus();
        QTest::keyClicks(nummer(), "1");
        QTest::keyClick(nummer(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(nummer(), "1");
        QTest::keyClick(nummer(), Qt::Key_Return);
        QCOMPARE(nummer()->text(), "1");
        weiter("CVor");
        QCOMPARE(nummer()->text(), "2");
        QTest::keyClicks(Offen("PFÄndern")->findChild<QTextEdit *>("MFrage"), "neu ");
        weiter("CVor");
        QCOMPARE(nummer()->text(), "3");
        weiter("CZurück");
        weiter("CZurück");
        QCOMPARE(nummer()->text(), "1");
        Offen("PFÄndern")->close();
        QTRY_VERIFY(Bereit("LBOX"));
        // Opened from the box it walks through the box again.
        Waehlen("MKarten");
        QTRY_VERIFY(Bereit("PFÄndern"));
        QCOMPARE(nummer()->text(), "1");
        weiter("CZurück");
        QCOMPARE(nummer()->text(), "3");
        weiter("CZurück");
        QCOMPARE(nummer()->text(), "2");
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

    void TheStatusLineSaysThatThereIsNoSoundDeviceWhileItIsSo()
    {
        QFile applaus(ProgramDir() + "/Applause.wav");
        QVERIFY(applaus.copy(Pfad("Applause.wav")));
        qunsetenv("SDL_AUDIODRIVER");
        qputenv("PULSE_SERVER", "unix:/nicht/da");
        qputenv("ALSA_CONFIG_PATH", "/dev/null");
        QList<CardRecord> karten;
        for (int i = 1; i <= 500; ++i) {
            karten << MakeCard(i, 0, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = "ja";
        }
        MakeCardFile(Pfad("a.pzb"), karten);
        Konfig("False");
        MachProgramm();
        QVERIFY(programm_->Starten(Pfad("a.pzb")));
        QTRY_VERIFY(Bereit("LBOX") && Kartei() == "a.pzb");
        const auto *hinweis = Offen("LBOX")->findChild<QLabel *>("LTongeraet");
        QVERIFY(!hinweis->isVisible()); // nobody has looked for a device yet
        const auto zeigt = [&] {
            const Drehbuch buch(
                {Schreiben("PFUse", "ja"), Taste("PFUse", Qt::Key_Return), Taste("PFUse", Qt::Key_Return)});
            QTest::keyClick(Offen("LBOX"), Qt::Key_N);
            return buch.Fertig() && hinweis->isVisible();
        };
        for (int i = 0; i < 3; ++i)
            QVERIFY(zeigt()); // a message would keep the query open
        QCOMPARE(hinweis->text(), "kein Tongerät");

        QFile geraet(Pfad("asound.conf"));
        QVERIFY(geraet.open(QIODevice::WriteOnly));
        geraet.write("pcm.!default { type null }");
        geraet.close();
        qputenv("ALSA_CONFIG_PATH", QFile::encodeName(geraet.fileName()));
        QTRY_VERIFY_WITH_TIMEOUT(!zeigt(), 60000);
        programm_.reset();
        qunsetenv("ALSA_CONFIG_PATH");
        qunsetenv("PULSE_SERVER");
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
};

PAUKFIX_TEST(ProgrammFensterTest)
#include "ProgrammFensterTest.moc"
