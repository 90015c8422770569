// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>

#include <csignal>

using namespace paukfix;

// The built program in a real window, used by keyboard.
class ProgrammLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
private slots:

    void init() { Aufbauen(Vorspann::Ja); }

    void FromTheIntroToTheMainWindowAndOut()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"));
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        QVERIFY(!anzeige_->Offen("Merkkasten"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    void ClosingTheIntroEndsTheProgram()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"));
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Taste("Merkkasten", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QVERIFY(!anzeige_->Offen("Lern-Box"));
    }

    void WithAnArgumentTheFileIsLearnedAtOnce()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Taste("Merkkasten Abfrage", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    void WithAnimationFalseTheIntroIsLeftOut()
    {
        QFile konfig(Pfad("konfig.dat"));
        QVERIFY(konfig.open(QIODevice::ReadWrite));
        const QByteArray text = konfig.readAll().replace("Animation=True", "Animation=False");
        QVERIFY(konfig.resize(0) && konfig.seek(0) && konfig.write(text) == text.size());
        konfig.close();
        Lauf lauf(*anzeige_, Pfad("paukfix"));
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        QVERIFY(!anzeige_->Offen("Merkkasten"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    void AMissingPictureIsReportedAndTheProgramStarts()
    {
        QVERIFY(QFile::remove(Pfad("lbox08.jpg")));
        Lauf lauf(*anzeige_, Pfad("paukfix"));
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->WarteAuf("Merkkasten"));
        QVERIFY(anzeige_->MeldungSchliessen());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten öffnen", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    // Neither beside the program nor where an installed one would find it.
    void AMissingKonfigIsReportedAndTheProgramStarts()
    {
        QVERIFY(QFile::remove(Pfad("konfig.dat")));
        Lauf lauf(*anzeige_, Pfad("paukfix"));
        QProcessEnvironment umgebung = anzeige_->umgebung;
        umgebung.insert("HOME", Pfad("heim"));
        lauf.prozess.setProcessEnvironment(umgebung);
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // no program directory can be made
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the report of the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the report of the main window
        QVERIFY(anzeige_->Schliessen("Merkkasten öffnen", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    void AnArgumentThatIsNoCardFileLeadsToTheDialog()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("ueber.rtf")});
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the refusal
        QVERIFY(anzeige_->Schliessen("Merkkasten öffnen", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    // As "nohup" starts it; the other signals end it all the same.
    void ASignalThatItWasStartedToIgnoreStaysIgnored()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        lauf.prozess.setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        QVERIFY(anzeige_->WarteAuf("Lern-Box"));
        QCOMPARE(kill(static_cast<pid_t>(lauf.prozess.processId()), SIGHUP), 0);
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Taste("Merkkasten Abfrage", "Escape"));
        QVERIFY(anzeige_->WarteAuf("Lern-Box"));
        QCOMPARE(kill(static_cast<pid_t>(lauf.prozess.processId()), SIGTERM), 0);
        QVERIFY(lauf.IstZuEnde());
    }

    // The second one is told and goes on with another file; the first one never notices.
    void TwoProgramsOnOneFile()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        MakeCardFile(Pfad("b.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        Lauf erster(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(erster.Starten());
        QVERIFY(erster.HatGeoeffnet(Pfad("a.pzb")));
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Abfrage"));
        Lauf zweiter(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(zweiter.Starten());
        // It is locked, and not to be looked at either.
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return"));
        QVERIFY(anzeige_->Schliessen("Merkkasten", "alt+n"));
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+l"));
        QVERIFY(anzeige_->Taste("Datei laden", "End"));
        QVERIFY(anzeige_->Taste("Datei laden", "Return"));
        QVERIFY(zweiter.HatGeoeffnet(Pfad("b.pzb")));
        QVERIFY(erster.HatGeoeffnet(Pfad("a.pzb")));
        QVERIFY(anzeige_->Taste("Lern-Box", "3"));
        for (const char *taste : {"x", "Return", "Return"})
            QVERIFY(anzeige_->Taste("Merkkasten Abfrage", taste));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(zweiter.IstZuEnde());
        for (const char *taste : {"x", "Return", "Return"})
            QVERIFY(anzeige_->Taste("Merkkasten Abfrage", taste));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(erster.IstZuEnde());
        QCOMPARE(ReadCards(Pfad("a.pzb")).front().FachNr, 1);
        QCOMPARE(ReadCards(Pfad("b.pzb")).at(1).FrageNr, 2);
        QCOMPARE(ReadCards(Pfad("b.pzb")).at(1).FachNr, 1);
    }
};

PAUKFIX_CORE_TEST(ProgrammLaufTest)
#include "ProgrammLaufTest.moc"
