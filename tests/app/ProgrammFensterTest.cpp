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
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        QVERIFY(!Hand::Offen("LBOX"));
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void EveryFileToolOpensFromTheMenu()
    {
        OeffnenMitZweiDateien();
        for (const auto &[eintrag, name] : Dateiwerkzeuge) {
            const Drehbuch buch({Taste(QString::fromUtf8(name), Qt::Key_Escape)});
            Waehlen(eintrag);
            QVERIFY(buch.Fertig());
            QVERIFY(!Hand::Offen(QString::fromUtf8(name)));
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
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        QVERIFY(!Hand::Offen("Uebersicht") && !Hand::Offen("LBOX"));
        QCOMPARE(Hand::An("PFÄndern").Text("MFrage"), "Frage 2");
        Hand::Offen("PFÄndern")->close();
        QTRY_VERIFY(Hand::Bereit("LBOX"));
    }

    void FromTheOverviewTheEditorWalksByNumberAndTheBoxGoesOnInItsOwnOrder()
    {
        MakeCardFile(Pfad("a.pzb"),
                     {MakeCard(1, 3, 1), MakeCard(2, 0, 2), MakeCard(3, 1, 1), MakeCard(4, 0, 1)});
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QTRY_VERIFY(Hand::Bereit("LBOX") && Kartei() == "a.pzb");
        const Drehbuch buch({Taste("Uebersicht", Qt::Key_Down), Taste("Uebersicht", Qt::Key_Return)});
        Waehlen("Manzeigen");
        QVERIFY(buch.Fertig());
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        const auto nummer = [] { return Hand::An("PFÄndern").Text("MaskFrageNr"); };
        const auto weiter = [](const QString &knopf) { Hand::An("PFÄndern").Klick(knopf); };
        QCOMPARE(nummer(), "2");
        weiter("CVor");
        QCOMPARE(nummer(), "3");
        Hand::An("PFÄndern").Tippe("MaskFrageNr", "1");
        Hand::An("PFÄndern").Ersetze("MaskFrageNr", "1");
        Hand::An("PFÄndern").Taste(Qt::Key_Return);
        QCOMPARE(nummer(), "1");
        weiter("CVor");
        QCOMPARE(nummer(), "2");
        Hand::An("PFÄndern").Tippe("MFrage", "neu ");
        weiter("CVor");
        QCOMPARE(nummer(), "3");
        weiter("CZurück");
        weiter("CZurück");
        QCOMPARE(nummer(), "1");
        Hand::Offen("PFÄndern")->close();
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        // Opened from the box it walks through the box again.
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        QCOMPARE(nummer(), "1");
        weiter("CZurück");
        QCOMPARE(nummer(), "3");
        weiter("CZurück");
        QCOMPARE(nummer(), "2");
        Hand::Offen("PFÄndern")->close();
        QTRY_VERIFY(Hand::Bereit("LBOX"));
    }

    void TheOverviewNeedsAnOpenFile()
    {
        Konfig("False");
        MachProgramm();
        const Drehbuch anfang({DialogAbbrechen()});
        QVERIFY(programm_->Starten({}));
        QTRY_VERIFY(anfang.Fertig());
        const Drehbuch buch({Meldung()});
        Waehlen("Manzeigen");
        QVERIFY(buch.Fertig());
        QCOMPARE(meldungen_, QStringList{"Bitte zuerst eine Datei öffnen"});
        QVERIFY(!Hand::Offen("Uebersicht"));
    }

    void TheCardFileIsChangedByKeyboardAlone()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch({Taste("Datausw", Qt::Key_Down), Taste("Datausw", Qt::Key_Return)});
        Hand::An("LBOX").Taste(Qt::Key_L, Qt::ControlModifier);
        QVERIFY(buch.Fertig());
        QTRY_COMPARE(Kartei(), "b.pzb");
    }

    void TheEditorStandsInForTheBoxAndAddsACardToIt()
    {
        EditorOeffnen();
        QCOMPARE(Hand::An("PFÄndern").Text("MaskFrageNr"), "1");
        Hand::An("PFÄndern").Klick("CEOF");
        Hand::An("PFÄndern").Tippe("MFrage", "neu");
        Hand::An("PFÄndern").Tippe("Antwort(0)", "ja");
        Hand::An("PFÄndern").Taste(Qt::Key_I, Qt::ControlModifier);
        Hand::An("PFÄndern").Klick("Cback");
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        QVERIFY(!Hand::Offen("PFÄndern"));
        const auto *fach = Hand::An("LBOX").Finde<QWidget>("Image0(0)");
        QVERIFY2(fach->accessibleName().contains("Neu: 3 von"), qPrintable(fach->accessibleName()));
        programm_.reset();
        QCOMPARE(ReadCards(Pfad("a.pzb")).at(2).Frage_Klartext, "neu");
    }

    void TheQuerySendsItsCardToTheEditor()
    {
        OeffnenMitZweiDateien();
        const Drehbuch buch(
            {Drehbuch::In("PFUse", [](QWidget &abfrage) { Hand(abfrage).Klick("Command1"); })});
        Hand::An("LBOX").Taste(Qt::Key_N);
        QVERIFY(buch.Fertig());
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        QVERIFY(!Hand::Offen("LBOX") && !Hand::Offen("PFUse"));
        QCOMPARE(Hand::An("PFÄndern").Text("MaskFrageNr"), "1");
        Hand::An("PFÄndern").Tippe("MFrage", "anders ");
        Hand::Offen("PFÄndern")->close();
        QTRY_VERIFY(Hand::Bereit("LBOX"));
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
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QTRY_VERIFY(Hand::Bereit("LBOX") && Kartei() == "a.pzb");
        const auto *hinweis = Hand::An("LBOX").Finde<QLabel>("LTongeraet");
        QVERIFY(!hinweis->isVisible()); // nobody has looked for a device yet
        const auto zeigt = [&] {
            const Drehbuch buch(
                {Schreiben("PFUse", "ja"), Taste("PFUse", Qt::Key_Return), Taste("PFUse", Qt::Key_Return)});
            Hand::An("LBOX").Taste(Qt::Key_N);
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
        Hand::An("PFÄndern").Tippe("MFrage", "halb ");
        Hand::An("PFÄndern").Ersetze("Antwort(0)", {});
        const Drehbuch bleiben({Meldung(), Meldung()}); // no answer; discard? no
        QVERIFY(!Hand::Offen("PFÄndern")->close());
        QVERIFY(bleiben.Fertig());
        QCOMPARE(meldungen_.at(0), "Keine Antwort eingegeben");
        QVERIFY(meldungen_.at(1).contains("verwerfen"));
        QVERIFY(Hand::Offen("PFÄndern") && !Hand::Offen("LBOX"));
        Hand::An("PFÄndern").Tippe("Antwort(0)", "ja");
        QApplication::closeAllWindows();
        QVERIFY(!Hand::Offen("PFÄndern") && !Hand::Offen("LBOX"));
        programm_.reset();
        QVERIFY(ReadCards(Pfad("a.pzb")).at(0).Frage_Klartext.startsWith("halb "));
    }

    void TheAutomaticModeDoesNotAskWhileCardsAreEdited()
    {
        OeffnenMitZweiDateien();
        auto *automatik = Hand::An("LBOX").Finde<QAction>("MAutoschalter");
        automatik->trigger();
        QVERIFY(automatik->isChecked());
        Hand::An("LBOX").Finde<QAction>("MKarten")->trigger();
        QVERIFY(!automatik->isChecked());
        Hand::Offen("PFÄndern")->close();
    }

    void TheEditorOpensAgainWithItsSizeAndTheSearchTerm()
    {
        EditorOeffnen();
        Hand::Offen("PFÄndern")->resize(1100, 800);
        QString begriff;
        const Drehbuch suche({Schreiben("Suchen", "xyz"), Taste("Suchen", Qt::Key_Escape),
                              Lesen("Suchen", "suchtext", begriff), Taste("Suchen", Qt::Key_Escape)});
        Hand::An("PFÄndern").Taste(Qt::Key_F3);
        Hand::Offen("PFÄndern")->close();
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        Hand::An("LBOX").Finde<QAction>("MKarten")->trigger();
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        QCOMPARE(Hand::Offen("PFÄndern")->size(), QSize(1100, 800));
        Hand::An("PFÄndern").Taste(Qt::Key_F3);
        QVERIFY(suche.Fertig());
        QCOMPARE(begriff, "xyz");
        Hand::Offen("PFÄndern")->close();
    }
};

PAUKFIX_TEST(ProgrammFensterTest)
#include "ProgrammFensterTest.moc"
